// Eight characters at a time are told as one by one.
#include "trace/Utf8.h"

#include <gtest/gtest.h>

#include <string>

TEST(Utf8Test, PrintableIsAsciiWithoutControlCharactersWhereverItStands) {
    for (std::size_t size = 0; size <= 25; ++size) {
        const std::string text = std::string("~ }!|\"{#z$").append(size, '~').substr(0, size);
        EXPECT_TRUE(IsPrintable(text)) << text;
        for (std::size_t place = 0; place < size; ++place) {
            std::string changed = text;
            for (int code = 0; code < 256; ++code) {
                changed[place] = static_cast<char>(code);
                EXPECT_EQ(IsPrintable(changed), code >= 0x20 && code <= 0x7E) << code;
            }
        }
    }
}
