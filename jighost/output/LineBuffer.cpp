// Lines are sent whole; a part of one only where the program asks for it, as behind progress.
#include "jighost/output/LineBuffer.h"

#include "jighost/output/Wrapping.h"
#include "platform/StandardFiles.h"

LineBuffer::int_type LineBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::not_eof(character);
    }
    const char written = traits_type::to_char_type(character);
    return xsputn(&written, 1) == 1 ? character : traits_type::eof();
}

std::streamsize LineBuffer::xsputn(const char* pText, std::streamsize count) {
    const std::string_view text(pText, static_cast<std::size_t>(count));
    const std::size_t lastEnd = text.rfind('\n');
    const std::size_t sent = lastEnd == std::string_view::npos ? 0 : m_Text.size() + lastEnd + 1;
    m_Text += text;
    return Send(sent) ? count : 0;
}

int LineBuffer::sync() {
    return Send(m_Text.size()) ? 0 : -1;
}

bool LineBuffer::Send(std::size_t count) {
    if (m_nError == 0 && count > 0) {
        const std::string_view text = std::string_view(m_Text).substr(0, count);
        const std::size_t width = TerminalWidth(m_nFile);
        m_nError = width == 0 ? WriteStandardFile(m_nFile, text)
                              : WriteStandardFile(m_nFile, Wrapped(text, width, m_Column));
    }
    m_Text.erase(0, count);
    return m_nError == 0;
}
