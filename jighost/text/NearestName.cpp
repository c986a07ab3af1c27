// Names ordered by how many letters lie between them and the one given.
#include "jighost/text/NearestName.h"

#include <algorithm>
#include <cctype>
#include <numeric>

static const std::size_t MAX_SUGGESTIONS = 3;

static bool AreAlike(char left, char right) {
    return std::tolower(static_cast<unsigned char>(left)) ==
           std::tolower(static_cast<unsigned char>(right));
}

/// Characters to insert, drop or exchange to get from one name to the other.
static std::size_t Distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t exchanged = diagonal + (AreAlike(from[i], to[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

std::string NearestNames(std::string_view name, const std::vector<std::string>& names) {
    std::vector<std::pair<std::size_t, std::string>> nearest;
    for (const std::string& known : names) {
        const std::size_t distance = Distance(name, known);
        if (3 * distance <= std::max(name.size(), known.size())) {
            nearest.emplace_back(distance, known);
        }
    }
    std::sort(nearest.begin(), nearest.end());
    nearest.resize(std::min(nearest.size(), MAX_SUGGESTIONS));
    std::string text;
    for (const auto& [distance, known] : nearest) {
        text += (text.empty() ? "; did you mean '" : " or '") + known + "'";
    }
    return text.empty() ? text : text + '?';
}
