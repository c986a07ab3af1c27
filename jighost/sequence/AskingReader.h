// A step of a sequence's file that asks.
#pragma once

#include "jighost/sequence/FilledText.h"
#include "jighost/sequence/SequenceFile.h"

/// Throws as ReadStep does.
STEP ReadAsking(const FilledText& texts, const YAML::Node& node);
