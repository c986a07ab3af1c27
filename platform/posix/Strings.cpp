// Bounded string routines with their error numbers.
#include <cerrno>
#include <charconv>
#include <cstring>

#include "platform/posix/WindowsCalls.h"

static errno_t Refuse(char* pszDestination, std::size_t size, errno_t error) {
    if (pszDestination != nullptr && size > 0) {
        pszDestination[0] = '\0';
    }
    return error;
}

errno_t strcpy_s(char* pszDestination, std::size_t size, const char* pszSource) {
    if (pszDestination == nullptr || size == 0 || pszSource == nullptr) {
        return Refuse(pszDestination, size, EINVAL);
    }
    const std::size_t length = strnlen(pszSource, size);  // the source need not end
    if (length == size) {
        return Refuse(pszDestination, size, ERANGE);
    }
    std::memcpy(pszDestination, pszSource, length + 1);
    return 0;
}

errno_t strcat_s(char* pszDestination, std::size_t size, const char* pszSource) {
    if (pszDestination == nullptr || pszSource == nullptr) {
        return Refuse(pszDestination, size, EINVAL);
    }
    const std::size_t length = strnlen(pszDestination, size);
    // A destination without an end has no room left, which the copy refuses.
    const errno_t error = strcpy_s(pszDestination + length, size - length, pszSource);
    return error == 0 ? 0 : Refuse(pszDestination, size, error);
}

static std::to_chars_result WriteDigits(char* pBegin, char* pEnd, int value, int radix) {
    // Only decimal numbers have a sign; in the other radices the bits are shown.
    return radix == 10 ? std::to_chars(pBegin, pEnd, value)
                       : std::to_chars(pBegin, pEnd, static_cast<unsigned int>(value), radix);
}

errno_t _itoa_s(int value, char* pszBuffer, std::size_t size, int radix) {
    if (pszBuffer == nullptr || size == 0 || radix < 2 || radix > 36) {
        return Refuse(pszBuffer, size, EINVAL);
    }
    const auto [pEnd, error] = WriteDigits(pszBuffer, pszBuffer + size - 1, value, radix);
    if (error != std::errc()) {
        return Refuse(pszBuffer, size, ERANGE);
    }
    *pEnd = '\0';
    return 0;
}
