// Records of format 1, which have neither body nor station, and of each step the last attempt.
#pragma once

#include "jighost/records/RecordReading.h"

/// The record's own number is made of the document's text: the same file twice is one record.
RUN_RECORD ReadFormerRecord(const RecordReading& reading, const std::string& text);
