// 122 bits of chance or of a digest, with version and variant among them.
#include "jighost/records/RecordNumber.h"

#include <random>

#include "recorder/Sha256.h"

/// From 32 hexadecimal digits.
static std::string NumberOfDigits(std::string digits, char version) {
    digits[12] = version;
    digits[16] = "89ab"[std::stoul(digits.substr(16, 1), nullptr, 16) & 3U];
    for (const std::size_t place : {20U, 16U, 12U, 8U}) {
        digits.insert(place, 1, '-');
    }
    return digits;
}

std::string NewRecordNumber() {
    std::random_device chance;
    std::string bytes;
    for (int i = 0; i < 16; ++i) {
        bytes += static_cast<char>(chance() & 0xFFU);
    }
    return NumberOfDigits(Recorder::Sha256(bytes).substr(0, 32), '4');
}

std::string RecordNumberOf(std::string_view text) {
    return NumberOfDigits(Recorder::Sha256(text).substr(0, 32), '8');
}
