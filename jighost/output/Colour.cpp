// Whether colours are wanted, asked once.
#include "jighost/output/Colour.h"

#include <cstdlib>

#include "platform/Program.h"

static bool AreColoursWanted() {
    const char* pszNoColor = std::getenv("NO_COLOR");
    return IsOutputTerminal() && (pszNoColor == nullptr || *pszNoColor == '\0');
}

std::string Coloured(const std::string& text, COLOUR colour) {
    static const bool bColours = AreColoursWanted();
    const std::string start = colour == COLOUR::RED ? "\033[31m" : "\033[32m";
    return bColours ? start + text + "\033[0m" : text;
}
