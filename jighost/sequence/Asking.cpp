// Answers as people write them.
#include "jighost/sequence/Asking.h"

#include "jighost/sequence/Pattern.h"
#include "jighost/text/HostError.h"
#include "jighost/text/Numbers.h"

static constexpr RECORD NO_RECORD = {"", 0, {}};
const OPERATION_INFO ASK_OPERATION = {"ask", RECORD_USE::NONE, &NO_RECORD, "", ""};

[[noreturn]] static void RefuseAnswer(const std::string& expected, const std::string& answer) {
    throw HostError(EXIT_WRONG_USE, "expected " + expected + ", got '" + answer + "'");
}

static std::string YesOrNo(const std::string& answer) {
    if (answer != "yes" && answer != "y" && answer != "no" && answer != "n") {
        RefuseAnswer("yes or no", answer);
    }
    return answer[0] == 'y' ? "yes" : "no";
}

MEASUREMENT MeasuredAnswer(const ASKING& asking, const std::string& answer) {
    const MEASURE& measure = asking.measure;
    MEASUREMENT measurement;
    measurement.measure = &measure;
    measurement.text = asking.answer == ANSWER_KIND::YES_OR_NO ? YesOrNo(answer) : answer;
    if (asking.answer == ANSWER_KIND::NUMBER) {
        measurement.number = ParseQuantity(answer);
        if (!measurement.number) {
            RefuseAnswer("a number", answer);
        }
        measurement.bWithin = measure.limits.Hold(*measurement.number);
    } else if (!measure.pattern.empty()) {
        measurement.bWithin = IsOfPattern(measurement.text, measure.pattern);
    }
    return measurement;
}
