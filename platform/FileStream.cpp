// The stream's characters are the reader's blocks.
#include "platform/FileStream.h"

FileStream::FileStream(const std::filesystem::path& path) : std::istream(nullptr), m_Buffer(path) {
    rdbuf(&m_Buffer);
    if (!m_Buffer.IsOpen()) {
        setstate(std::ios::failbit);
    }
}

FileStream::Buffer::int_type FileStream::Buffer::underflow() {
    const std::size_t count = m_File.Read(m_Block);
    setg(m_Block.data(), m_Block.data(), m_Block.data() + count);
    return count == 0 ? traits_type::eof() : traits_type::to_int_type(m_Block.front());
}
