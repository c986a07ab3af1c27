// What programs read of jighost, as JSON.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>

#include "jighost/operations/Record.h"

/// Keeps the keys in the order in which they are set.
using Json = nlohmann::ordered_json;

/// Stands as "format" in each document; a change that breaks its readers counts it up.
constexpr int JSON_FORMAT = 1;

/// Field by field; texts as RecordText gives them, bytes as "b5 0d 00".
Json RecordJson(const RECORD& record, const RecordBytes& bytes);

/// "result" and "result_name"; null for none.
Json ResultJson(std::optional<std::int32_t> result);

/// The whole text of a document, indented unless the indent is none. Bytes that are no UTF-8 come
/// out as the replacement character, harmful characters of PlainText as \uNNNN: what reads JSON has
/// them as they were.
std::string JsonText(const Json& json, int indent = 2);
constexpr int ON_ONE_LINE = -1;

/// Writes a document and a line's end.
void WriteJson(std::ostream& out, const Json& json);
