// The file of a sequence read with values: its own steps, those that it repeats, and those of the
// files that it includes, one behind the other.
//
//     - include: identity.yaml      # seen from the folder of the file that includes it
//       name: new body              # stands ahead of the names of its steps
//       parameters: {serial: "${serial}"}
//     - repeat: [1, 2, 4]           # or how often
//       as: time                    # ${time} is 1, then 2, then 4; of a number 1, 2, 3 ...
//       steps: ...
#pragma once

#include "jighost/sequence/Mistakes.h"
#include "jighost/sequence/SequenceFile.h"

/// Reads and checks all of it; what is wrong is among the mistakes. Where a value is not known yet,
/// what depends on it is neither checked nor in the sequence.
SEQUENCE ReadWithValues(const YamlFile& file, const VALUES& values, Mistakes& mistakes);
