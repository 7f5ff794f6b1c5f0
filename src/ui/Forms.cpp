#include "ui/Forms.h"

namespace tarvik {

namespace {
Forms* current = nullptr;
} // namespace

Forms& forms() {
    return *current;
}

FormsScope::FormsScope(Forms& forms) : previous_(current) {
    current = &forms;
}

FormsScope::~FormsScope() {
    current = previous_;
}

} // namespace tarvik
