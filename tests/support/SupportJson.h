// What a document must have, written as a document.
#pragma once

#include <gmock/gmock.h>

#include "jighost/output/Json.h"

/// Whether it has all that is expected. Objects may have more; lists have as many elements.
bool HasAll(const Json& found, const Json& expected);

MATCHER_P(Holds, expected, "") {
    *result_listener << "expected of it is\n" << Json(expected).dump(2);
    return HasAll(arg, expected);
}
