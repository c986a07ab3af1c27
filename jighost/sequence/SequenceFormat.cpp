// What only newer formats have is refused in older files.
#include "jighost/sequence/SequenceFormat.h"

void RequireNewFormat(const YamlFile& file, const YAML::Node& node, const std::string& expected) {
    if (file.Format() < SEQUENCE_FORMAT) {
        file.Refuse(
            node, "expected " + expected +
                      " in a sequence of format 1, which has no more; format: " +
                      std::to_string(SEQUENCE_FORMAT) + " has");
    }
}
