// Foreign text in markup.
#include "jighost/report/Markup.h"

#include <gtest/gtest.h>

namespace {

TEST(MarkupTest, ForeignTextStaysText) {
    static constexpr std::pair<std::string_view, std::string_view> CASES[] = {
        {R"(<a href="x" b='y'>&amp;)", "&lt;a href=&quot;x&quot; b=&#39;y&#39;&gt;&amp;amp;"},
        {"Line 4, \xC3\xA4 \xE2\x82\xAC", "Line 4, \xC3\xA4 \xE2\x82\xAC"},
        {"a\n\x1B\x7F", R"(a\x0a\x1b\x7f)"},
        {"\xE2\x80\xAE", R"(\xe2\x80\xae)"},                          // turns what follows around
        {"\xFF\xC3", R"(\xff\xc3)"},                                  // no UTF-8
        {"\xED\xA0\x80", R"(\xed\xa0\x80)"},                          // half of a character
        {"\xEF\xBF\xBE\xEF\xBF\xBF", R"(\xef\xbf\xbe\xef\xbf\xbf)"},  // none of XML
        {"\xEF\xBF\xBD", "\xEF\xBF\xBD"},
    };
    for (const auto& [text, markup] : CASES) {
        EXPECT_EQ(MarkupText(text), markup);
    }
    EXPECT_EQ(MarkupText(std::string_view("\0", 1)), R"(\x00)");
    Markup all;
    all << "<b>"_tag
        << "<b>" << std::string("'") << 2.5 << -5 << "</b>"_tag;
    EXPECT_EQ(all.Text(), "<b>&lt;b&gt;&#39;2.5-5</b>");
}

}  // namespace
