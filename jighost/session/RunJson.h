// One run of an operation, as programs read it.
#pragma once

#include "jighost/output/Json.h"
#include "jighost/session/Session.h"

/// Without the format of a document.
Json RunJson(const OPERATION_RUN& run);
