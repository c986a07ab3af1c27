// The texts that the build has taken from the files.
#include "jighost/report/PageParts.h"

#include <PageTexts.h>

const std::string_view PAGE_STYLE = STYLE_TEXT;
const std::string_view PAGE_SCRIPT = SCRIPT_TEXT;
