// Expected fields looked up one by one, at any depth.
#include "tests/support/SupportJson.h"

#include <algorithm>

bool HasAll(const Json& found, const Json& expected) {
    if (expected.is_object()) {
        const auto& fields = expected.items();
        return found.is_object() &&
               std::all_of(fields.begin(), fields.end(), [&](const auto& each) {
                   return found.contains(each.key()) && HasAll(found[each.key()], each.value());
               });
    }
    if (expected.is_array()) {
        return found.is_array() &&
               std::equal(found.begin(), found.end(), expected.begin(), expected.end(), HasAll);
    }
    return found == expected;
}
