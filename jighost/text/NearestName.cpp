// Names ordered by how many letters lie between them and the one given.
#include "jighost/text/NearestName.h"

#include <algorithm>
#include <cctype>
#include <numeric>

static const std::size_t MAX_SUGGESTIONS = 3;

static std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(text.begin(), text.end(), lower.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    return lower;
}

/// Characters to insert, drop or exchange to get from one name to the other; where these are more
/// than `limit`, some number above it.
static std::size_t Distance(std::string_view from, std::string_view to, std::size_t limit) {
    // Lengths alone tell most names apart: the rest takes time by their product.
    const std::size_t apart = std::max(from.size(), to.size()) - std::min(from.size(), to.size());
    if (apart > limit) {
        return apart;
    }
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0]++;
        std::size_t least = row[0];
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t exchanged = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, diagonal + 1, row[j] + 1});
            least = std::min(least, row[j + 1]);
        }
        if (least > limit) {
            return least;
        }
    }
    return row.back();
}

std::string NearestNames(std::string_view name, const std::vector<std::string>& names) {
    const std::string wanted = LowerCase(name);
    std::vector<std::pair<std::size_t, std::string>> nearest;
    for (const std::string& known : names) {
        const std::size_t limit = std::max(name.size(), known.size()) / 3;
        const std::size_t distance = Distance(wanted, LowerCase(known), limit);
        if (distance <= limit) {
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
