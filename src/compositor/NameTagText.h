#pragma once

#include <string>

namespace velmo {

/// What stands in the name tag of the column. UTF-8; the role may be empty.
struct NameTagText {
    std::string name;
    std::string role;
    friend bool operator==(const NameTagText&, const NameTagText&) = default;
};

} // namespace velmo
