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
    const std::size_t whole = text.rfind('\n') + 1;  // none: npos + 1 is 0
    bool bSent = true;
    if (whole > 0 && m_Text.empty()) {  // perhaps a long list: no copy of it is made
        bSent = Send(text.substr(0, whole));
    } else if (whole > 0) {
        bSent = Send(m_Text.append(text, 0, whole));
        m_Text.clear();
    }
    m_Text += text.substr(whole);
    return bSent ? count : 0;
}

int LineBuffer::sync() {
    const bool bSent = Send(m_Text);
    m_Text.clear();
    return bSent ? 0 : -1;
}

bool LineBuffer::Send(std::string_view text) {
    if (m_nError == 0 && !text.empty()) {
        const std::size_t width = TerminalWidth(m_nFile);
        m_nError = width == 0 ? WriteStandardFile(m_nFile, text)
                              : WriteStandardFile(m_nFile, Wrapped(text, width, m_Column));
    }
    return m_nError == 0;
}
