// Test results as a parser of XML reads them.
#include "jighost/report/JUnit.h"
#include "tests/support/SupportRecords.h"
#include "tests/support/posix/Shell.h"

namespace {

TEST(JUnitXmlTest, AnyTextIsReadBackAsItIsShown) {
    const FreshFolder folder;
    RUN_RECORD record = SampleRecord();
    record.sequence = "]]><a b='&lt;' c=\"\x01\xFF\xEF\xBF\xBF\n";
    record.station = record.sequence;
    record.steps[0].name = record.sequence;
    record.steps[0].problem = record.sequence;
    record.steps[0].attempts[0].log = {record.sequence};
    record.parameters = {{record.sequence, record.sequence}};
    WriteFile("results.xml", JUnitText(record));
    const JIGHOST_RUN run = RunShell(R"(python3 -c '
import xml.etree.ElementTree as tree
suite, = tree.parse("results.xml").getroot()
case, = suite.findall("testcase[error]")
texts = [suite.get("name"), suite.get("hostname"), suite.find(".//property[last()]").get("value"),
         case.get("name")[3:], case.find("error").get("message"), case.find("system-out").text[:-1]]
print(*set(texts))')");
    EXPECT_EQ(
        run.output, R"(]]><a b='&lt;' c="\x01\xff\xef\xbf\xbf\x0a)"
                    "\n");
}

}  // namespace
