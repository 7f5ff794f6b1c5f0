#pragma once

#include <stdexcept>

namespace tarvik {

/// Puts the one object of its type into use for its own lifetime, then the one before it again.
template <class T>
class Current {
public:
    explicit Current(T& object) : previous_(object_) { object_ = &object; }
    ~Current() { object_ = previous_; }
    Current(const Current&) = delete;
    Current& operator=(const Current&) = delete;

    /// The object in use. Throws std::logic_error with that text where none is.
    static T& get(const char* whatIsMissing) {
        if (object_ == nullptr) {
            throw std::logic_error(whatIsMissing);
        }
        return *object_;
    }

private:
    inline static T* object_ = nullptr;
    T* previous_;
};

} // namespace tarvik
