#include "state/mdlVar.h"

namespace tarvik {

State& state() {
    return StateScope::get("no state is in place");
}

} // namespace tarvik
