// Operations at the edges of their values, against a table: all steps, the record, the result.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <sstream>

#include "tests/support/SupportBlocks.h"
#include "tests/support/SupportOperations.h"

namespace {

struct EDGE {
    std::string title;
    OPERATION_FACTS facts;
    std::vector<std::function<void()>> setUps = {};  ///< of the body, behind those of the facts
    Steps behind = {};                               ///< the closing line
    bool bNull = false;                              ///< the host gives no record
    std::string block = {};  ///< of the body ID, behind the run; empty if it is not looked at
    std::string file = {};  ///< the bytes of CameraLog behind the run; empty if it is not looked at
};

std::uint32_t CountIn(std::istream& line) {
    return static_cast<std::uint32_t>(NumberIn(line));
}

/// The way in which the body is made to behave; none for what a fact is.
std::function<void()> SetUpIn(const std::string& key, std::istream& line) {
    using namespace SimulatedBody;
    if (key == "fail") {
        return [n = CountIn(line)] { FailCall(n); };
    }
    if (key == "throw") {
        return [n = CountIn(line)] { FailCall(n, {.kind = FAULT::STANDARD_EXCEPTION}); };
    }
    if (key == "prefix") {
        return [n = CountIn(line)] { FailLinePrefix(n); };
    }
    if (key == "failevent") {
        return [event = TextIn(line)] { FailEvent(event); };
    }
    if (key == "event") {
        const std::string event = TextIn(line);
        std::istringstream words(TextIn(line));
        const std::vector<std::int32_t> values(std::istream_iterator<std::int32_t>(words), {});
        return [=] { ScriptEvent(event, values); };
    }
    if (key == "cameralog") {
        return [bytes = FromHex(TextIn(line))] { SetCameraLog(bytes); };
    }
    if (key == "returnsize") {
        std::istringstream sizes(TextIn(line));
        const std::uint32_t reported = CountIn(sizes);
        return [reported, left = CountIn(sizes)] { ScriptReturnSize(reported, left); };
    }
    if (key == "folder") {
        return [path = TextIn(line)] {
            std::filesystem::remove(path);
            std::filesystem::create_directory(path);
        };
    }
    if (key == "ini") {
        std::string keys = TextIn(line);
        std::replace(keys.begin(), keys.end(), ' ', '\n');
        return [=] { WriteFile("BoardInf.ini", "[DLResonantFrequency]\n" + keys + "\n"); };
    }
    return {};
}

EDGE NewEdge(std::istream& line) {
    const OPERATION_FACTS& facts = FactsOf(TextIn(line));
    return {
        .title = facts.name + ": " + TextIn(line),
        .facts = {
            .name = facts.name,
            .logName = facts.logName,
            .closing = facts.closing,
            .errorLine = facts.errorLine}};
}

std::vector<EDGE> Edges() {
    std::vector<EDGE> edges;
    for (const std::string& line : TableLines("operations/edges.txt")) {
        std::istringstream words(line);
        for (std::string key; words >> key;) {
            if (key == "edge") {
                edges.push_back(NewEdge(words));
                continue;
            }
            EDGE& edge = edges.at(edges.size() - 1);
            if (auto setUp = SetUpIn(key, words)) {
                edge.setUps.push_back(std::move(setUp));
            } else if (key == "behind") {
                edge.behind.push_back(TextIn(words));
            } else if (key == "block") {
                edge.block = TextIn(words);
            } else if (key == "file") {
                edge.file = TextIn(words);
            } else if (key == "null") {
                edge.bNull = TextIn(words) == "yes";
            } else {
                TakeFact(edge.facts, key, words);
            }
        }
    }
    return edges;
}

TEST_F(ModuleTest, EdgesOfOperationsHaveTheirStepsAndLeaveTheRecord) {
    const std::vector<EDGE> edges = Edges();
    EXPECT_EQ(edges.size(), 94U);
    BlockHolder holder;
    EXPECT_EQ(holder.Open("BODYID", 8), "created");
    for (const EDGE& edge : edges) {
        SCOPED_TRACE(edge.title);
        SetUpBody(edge.facts);
        std::filesystem::remove("CameraLog");
        WriteFile("CameraLog", "earlier");
        holder.Write({1, 2, 3, 4, 5, 6, 7, 8});
        for (const auto& setUp : edge.setUps) {
            setUp();
        }
        SimulatedBody::Bytes record = LongRecord(edge.facts.given);
        Steps expected = WholeRun(edge.facts, edge.facts.result, edge.facts.steps);
        expected.insert(expected.end(), edge.behind.begin(), edge.behind.end());
        EXPECT_EQ(RunSteps(edge.facts.name, edge.bNull ? nullptr : record.data()), expected);
        EXPECT_EQ(Result(), edge.facts.result);
        EXPECT_EQ(Hex(record), Hex(LongRecord(Left(edge.facts))));
        if (!edge.block.empty()) {
            EXPECT_EQ(holder.Read(), edge.block);
        }
        if (!edge.file.empty()) {
            const SimulatedBody::Bytes bytes = FromHex(edge.file);
            EXPECT_EQ(ReadFile("CameraLog"), std::string(bytes.begin(), bytes.end()));
        }
    }
}

}  // namespace
