// Foreign text on its way to a terminal, and UTF-8 in all that jighost shows and keeps.
#include "jighost/text/PlainText.h"

#include "jighost/output/Json.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"
#include "trace/JsonLine.h"

using testing::HasSubstr;
using testing::Not;

namespace {

TEST(PlainTextTest, WhatSteersATerminalStandsInDigitsAndAllElseStays) {
    const std::pair<std::string_view, std::string_view> texts[] = {
        {"Line 9, Zürich – 北京 📷", "Line 9, Zürich – 北京 📷"},
        {"\x1B[31m", "\\x1b[31m"},
        {"a\r\nb\x7F", "a\\x0d\\x0ab\\x7f"},
        {"\u0085\u009B", "\\xc2\\x85\\xc2\\x9b"},
        {"\u202Egnp", "\\xe2\\x80\\xaegnp"},
        {"\u200B\uFEFF", "\\xe2\\x80\\x8b\\xef\\xbb\\xbf"},
        {"\xFF\xC3", "\\xff\\xc3"},
        {"\xC0\xAF", "\\xc0\\xaf"},  // longer than it needs to be
        {"\xE0\x80\xAF\xED\xA0\x80", "\\xe0\\x80\\xaf\\xed\\xa0\\x80"},  // and half a character
        {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},  // behind the last character
        {"\U0010FFFF\u0800\u07FF", "\U0010FFFF\u0800\u07FF"},
    };
    for (const auto& [text, plain] : texts) {
        EXPECT_EQ(PlainText(text), plain);
    }
    EXPECT_EQ(PlainText("a\"\\b", "\"\\"), "a\\x22\\x5cb");
    EXPECT_EQ(PlainText({"\0x", 2}), "\\x00x");
}

TEST(PlainTextTest, JsonStaysJsonAndHoldsWhatSteersATerminalByItsNumbers) {
    std::string text;
    JsonLine line(text);
    line.Add("text", std::string_view("Mü\"\\\x01\xFF"));
    line.End();
    EXPECT_EQ(text, "{\"text\":\"Mü\\\"\\\\\\u0001\uFFFD\"}\n");
    EXPECT_EQ(
        JsonText("Müller \u009B\u202E\U000E0001\x7F\x1B\xFF", ON_ONE_LINE),
        "\"Müller \\u009b\\u202e\\udb40\\udc01\\u007f\\u001b\uFFFD\"");
}

TEST(PlainTextTest, NoCommandForgesALineOfItsOutput) {
    const FreshFolder folder;
    const std::string forged = "\x1B[2K\njighost: all is well";
    WriteFile("steps.yaml", "format: 1\n\"key\\e[31m\\nforged\": 1\n");
    WriteFile(
        "x.jsonl",
        "{\"format\":1,\"content\":\"jighost trace\"}\n"
        "{\"entry\":\"\\u001b[31m\\nforged\"}\n");
    const std::vector<std::vector<std::string>> runs = {
        {"run", forged},
        {"run", "GetBodyID", "--" + forged},
        {"run", "GetBodyID", "--fault", forged + "=1"},
        {"run", "SetOwnerName", forged + "=1"},
        {"sequence", "steps.yaml"},
        {"sequence", forged},
        {"replay", "x.jsonl"},
        {"body", "show", forged},
        {"doctor", forged},
        {"verify", forged},
    };
    for (const std::vector<std::string>& arguments : runs) {
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_NE(run.exitCode, 0);
        EXPECT_THAT(run.output + run.errors, Not(HasSubstr("\x1B"))) << arguments[0];
        EXPECT_THAT(run.output + run.errors, Not(HasSubstr("\njighost: all is well")));
        EXPECT_THAT(run.output + run.errors, Not(HasSubstr("\nforged")));
    }
}

TEST(PlainTextTest, NamesOfPeopleStayReadable) {
    const FreshFolder folder;
    EXPECT_THAT(
        RunJighost({"run", "SetOwnerName", "OwnerName=Müller"}).output,
        HasSubstr("OwnerName = \"Müller\"\n"));
    EXPECT_THAT(
        RunJighost({"run", "SetOwnerName", "OwnerName=Müller", "--json"}).output,
        HasSubstr("\"OwnerName\": \"Müller\""));
}

}  // namespace
