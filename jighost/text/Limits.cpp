// Limits in words.
#include "jighost/text/Limits.h"

#include "jighost/text/Numbers.h"

std::string LimitsText(const LIMITS& limits) {
    if (limits.min && limits.max) {
        return "from " + NumberText(*limits.min) + " to " + NumberText(*limits.max);
    }
    if (limits.IsEmpty()) {
        return "";
    }
    return limits.min ? "at least " + NumberText(*limits.min)
                      : "at most " + NumberText(*limits.max);
}
