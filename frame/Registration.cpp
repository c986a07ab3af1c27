// How registrations reach the host.
#include "frame/Registration.h"

void RegisterEventProcs(
    EVENT_PROC_REGISTER_FUNC callback, std::span<const REGISTRATION> registrations) {
    for (const REGISTRATION& registration : registrations) {
        // Set afresh for each call, since the host may write to them.
        std::int32_t size = registration.size;
        std::int32_t direction = registration.direction;
        std::int32_t reserved = 0;
        callback(registration.name, registration.procedure, &size, &direction, &reserved);
    }
}
