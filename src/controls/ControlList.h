#pragma once

#include <string>
#include <vector>

namespace tarvik {

class Control;

/// Controls that belong together, in the order of their declaration, under a name of their own.
class ControlList {
public:
    explicit ControlList(const char* name) : name_(name) {}
    virtual ~ControlList() = default;
    ControlList(const ControlList&) = delete;
    ControlList& operator=(const ControlList&) = delete;

    const std::string& name() const { return name_; }
    /// All controls in the order of their declaration.
    const std::vector<Control*>& controls() const { return controls_; }
    /// Null when there is no control of that name.
    Control* control(const std::string& name) const;
    /// Puts a control at the end; it lives as long as the list.
    void add(Control& control, const std::string& name);

private:
    std::string name_;
    std::vector<Control*> controls_;
    std::vector<std::string> names_; ///< of the controls, in the same order
};

} // namespace tarvik
