// Words that stand in several places of a page.
#pragma once

#include "jighost/records/RunRecord.h"
#include "jighost/report/Markup.h"

/// The outcome with its colour and sign.
Markup OutcomeBadge(VERDICT verdict);
Markup OutcomeBadge(const RECORDED_MEASUREMENT& measurement);

/// Without an exponent, however large.
std::string FixedText(double number, int decimals);
/// Such as "0.25 ms", "12.5 ms" and "3.42 s".
std::string DurationText(double ms);

/// "12345", or "unknown".
std::string SerialText(const RUN_RECORD& record);
/// The begin of the run; "unknown" of a record that does not tell it.
std::string StartText(const RUN_RECORD& record);
/// Whether the record tells when its run and its steps began.
bool HasMoments(const RUN_RECORD& record);

/// "3, lens tilt".
std::string StepTitle(const RECORDED_STEP& step);

/// What a measurement is held against, such as "from -4 to 4" or "like L.*"; or nothing.
std::string DemandText(const RECORDED_MEASUREMENT& measurement);
/// "2.5 mm".
std::string ValueText(const RECORDED_MEASUREMENT& measurement);

/// A field of a record: a list with commas.
std::string FieldText(const Json& value);
