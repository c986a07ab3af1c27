// Lines for a terminal that is too narrow for them.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "jighost/output/Wrapping.h"

TEST(JighostWrappingTest, LinesBreakBetweenWordsAndGoOnBeneathTheirLastColumn) {
    const std::pair<std::string, std::string> texts[] = {
        {"fits in twenty cols.\nshort\n", "fits in twenty cols.\nshort\n"},
        {"jighost: words that go on\n", "jighost: words that\n  go on\n"},
        {"  1  name  some words here\n", "  1  name  some\n     words here\n"},
        {"\033[31mred words in a line\033[0m\n", "\033[31mred words in a line\033[0m\n"},
        {"M\xc3\xbcller's words do 20\n", "M\xc3\xbcller's words do 20\n"},
        {"a_word_of_more_than_twenty it is\n", "a_word_of_more_than_twenty\n  it is\n"},
    };
    for (const auto& [text, wrapped] : texts) {
        std::size_t column = 0;
        EXPECT_EQ(Wrapped(text, 20, column), wrapped);
    }
    std::size_t column = 0;
    EXPECT_EQ(Wrapped("asked for so far", 20, column), "asked for so far");
    EXPECT_EQ(Wrapped(" and answered\n", 20, column), " and\n  answered\n");
}
