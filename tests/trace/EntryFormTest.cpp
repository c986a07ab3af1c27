// Entries in any form that JSON allows tell the list the same; numbers that are none are refused.
#include <limits>
#include <regex>
#include <tuple>

#include "tests/support/Support.h"
#include "tests/support/SupportTable.h"
#include "trace/TraceReader.h"

namespace {

class EntryFormTest : public testing::Test {
  protected:
    inline static const std::string HEAD = R"({"format":2,"content":"jighost trace"})"
                                           "\n";
    // As they are written. The body's number is 1611423054321.
    inline static const std::string ENTRIES =
        R"({"entry":"operation","operation":1,"name":"GetBodyID","record":"00 00","thread":7,"at":1795381560123})"
        "\n"
        R"({"entry":"call","operation":1,"call":1,"function":"CProperty::Get","name":"","id":16777222,"value":8,"from_list":false,"sent":""})"
        "\n"
        R"({"entry":"answer","operation":1,"call":1,"received":"a7 0e 00 00 31 4f c1 5e","size_left":null,"result":null,"failure":null,"time_ms":0.25})"
        "\n"
        R"({"entry":"result","operation":1,"result":-3,"record":"00 00","time_ms":0.5})"
        "\n";

    static TRACED_OPERATION Read(const std::string& entries) {
        WriteFile("trace.jsonl", HEAD + entries);
        TraceReader reader({"trace.jsonl"}, [](const TRACED_OPERATION&) { return false; });
        EXPECT_EQ(reader.Next(), TRACE_ITEM::NEW_FILE);
        EXPECT_EQ(reader.Next(), TRACE_ITEM::OPERATION) << entries;
        TRACED_OPERATION operation = std::move(reader.Operation());
        EXPECT_EQ(reader.Next(), TRACE_ITEM::END) << entries;
        return operation;
    }

    static void ExpectSame(const std::string& entries) {
        const TRACED_OPERATION operation = Read(entries);
        EXPECT_EQ(
            std::tie(
                operation.number, operation.name, operation.at, operation.callCount,
                operation.bUnanswered, operation.result, operation.time, operation.serial),
            std::tuple(
                1U, "GetBodyID", std::optional(1795381560123), 1U, false, std::optional(-3), 0.5,
                std::optional(54321U)))
            << entries;
    }

    /// With each place that the expression finds in another form.
    static std::string Changed(const std::string& expression, const std::string& form) {
        std::string changed = std::regex_replace(ENTRIES, std::regex(expression), form);
        EXPECT_NE(changed, ENTRIES) << expression;
        return changed;
    }

    static void ExpectRefused(const std::string& entries, const std::string& complaint) {
        try {
            Read(entries);
            ADD_FAILURE() << "taken: " << entries;
        } catch (const TraceError& e) {
            EXPECT_EQ(std::string(e.what()), "trace.jsonl:" + complaint);
        }
    }

  private:
    FreshFolder m_Folder;
};

TEST_F(EntryFormTest, ListTellsTheSameOfEachForm) {
    ExpectSame(ENTRIES);
    for (const YAML::Node& row : TableRows("trace/forms.yaml", 13)) {
        ExpectSame(Changed(row[0].as<std::string>(), row[1].as<std::string>()));
    }
    const std::string longText(1000, 'x');
    ExpectSame(Changed("\"record\":\"00 00\"", "\"record\":\"" + longText + R"(\"\\")"));
}

TEST_F(EntryFormTest, NumbersAreTakenWholeOrRefused) {
    const auto expectTime = [](const std::string& text, double time) {
        EXPECT_EQ(Read(Changed("0\\.5", text)).time, time) << text;
    };
    expectTime("0", 0);
    expectTime("12345", 12345);
    expectTime("0.000001", 0.000001);
    expectTime("123456789.123456", 123456789.123456);
    expectTime("0.1234567890123456789", 0.1234567890123456789);
    EXPECT_EQ(
        Read(Changed("1795381560123", "9223372036854775807")).at,
        std::numeric_limits<std::int64_t>::max());

    for (const YAML::Node& row : TableRows("trace/refusals.yaml", 19)) {
        ExpectRefused(
            Changed(row[0].as<std::string>(), row[1].as<std::string>()), row[2].as<std::string>());
    }
}

}  // namespace
