// Entries in any form that JSON allows tell the list the same; numbers that are none are refused.
#include <functional>
#include <limits>
#include <regex>
#include <tuple>

#include "tests/support/Support.h"
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
    const std::string longText(1000, 'x');
    const std::vector<std::pair<std::string, std::string>> forms = {
        {"\":", "\" : "},
        {",\"", " , \""},
        {"\\}", " }\r"},
        {"GetBodyID", "G\\u0065tBodyID"},
        {"\"record\":\"00 00\",", ""},
        {"\"record\":\"00 00\"", "\"record\":\"" + longText + "\\\"\\\\\""},
        {"\"record\"", R"("note":{"call":9,"entry":["}"]},"record")"},
        {"\"(operation|call)\":1", R"("of":"a\"b","$1":1,"$1":2)"},
        {"\"thread\":7,", R"("thread":7,"named":"host","and so on":[1,{}],)"},
        {"\"(entry\":\"[a-z]*\"),(.*)\\}", "$2,\"$1}"},
        {"(\"operation\":1),(\"[^:]*\":[^,]*),", "$2,$1,"},
        {"0\\.5", "5e-1"},
        {"0\\.5", "0.50000000000000000000"},
        {"\"failure\":null,(\"time_ms\":0.25)", "$1,\"failure\":null"},
    };
    for (const auto& [expression, form] : forms) {
        ExpectSame(Changed(expression, form));
    }
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

    const std::string time = "5: time_ms: expected a number, got ";
    for (const char* pszTime : {"1.2.3", "0.5e", "-", "e", "1e999", "null", "true"}) {
        ExpectRefused(Changed("0\\.5", pszTime), time + pszTime);
    }
    const std::string range = "expected a number from 0 to 4294967295, got ";
    for (const char* pszNumber : {"4294967296", "18446744073709551617", "-1", "1.0", "1e0"}) {
        ExpectRefused(
            Changed("\"call\":1,\"r", "\"call\":" + std::string(pszNumber) + ",\"r"),
            "4: call: " + range + pszNumber);
    }
    ExpectRefused(
        Changed("-3", "null"),
        "5: result: expected a number from -2147483648 to "
        "2147483647, got null");
    for (const char* pszRest : {"1,}", "1 1}", "1}}", "\"1}", "tru", "1,\"\\"}) {
        ExpectRefused(
            Changed("\"call\":1,\"received.*", "\"call\":" + std::string(pszRest)),
            "4: expected a JSON object");
    }
}

}  // namespace
