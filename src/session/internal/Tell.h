#pragma once

#include <utility>

namespace velmo::internal {

/// Calls an operation of a surface that may be absent.
template <typename Port, typename Result, typename... Parameters, typename... Arguments>
void tell(Port* port, Result (Port::*operation)(Parameters...), Arguments&&... arguments) {
    if (port != nullptr) {
        (port->*operation)(std::forward<Arguments>(arguments)...);
    }
}

/// The window of a surface, absent when the surface is.
template <typename Port, typename Result>
Result windowOf(const Port* port, Result (Port::*identifier)() const) {
    return port == nullptr ? Result{} : (port->*identifier)();
}

} // namespace velmo::internal
