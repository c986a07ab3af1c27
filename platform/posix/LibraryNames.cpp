// By the sections of an ELF file that the dynamic linker looks at.
#include "platform/LibraryNames.h"

#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstring>

using Header = ElfW(Ehdr);
using Section = ElfW(Shdr);
using Symbol = ElfW(Sym);
using Entry = ElfW(Dyn);

static const unsigned char OWN_CLASS = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

namespace {

class Image {
  public:
    explicit Image(std::string_view bytes) : m_Bytes(bytes), m_Header(At<Header>(m_Bytes, 0)) {
        if (!MayHaveNames(bytes) || m_Header.e_ident[EI_CLASS] != OWN_CLASS) {
            m_Header.e_shnum = 0;
        }
    }

    /// All that the first section of a kind holds, each with the texts that belong to it.
    template <class Data, class Work>
    void ForEach(std::uint32_t kind, const Work& work) const {
        for (std::size_t i = 0; i < m_Header.e_shnum; ++i) {
            const Section section = SectionAt(i);
            if (section.sh_type == kind) {
                const std::string_view content = ContentOf(section);
                const std::string_view texts = ContentOf(SectionAt(section.sh_link));
                for (std::size_t at = 0; at < content.size(); at += sizeof(Data)) {
                    work(At<Data>(content, at), texts);
                }
                return;
            }
        }
    }

  private:
    /// Zeros for what does not lie within.
    template <class Data>
    static Data At(std::string_view bytes, std::uint64_t place) {
        Data data{};
        if (place < bytes.size() && bytes.size() - place >= sizeof(data)) {
            std::memcpy(&data, bytes.data() + place, sizeof(data));
        }
        return data;
    }

    Section SectionAt(std::size_t number) const {
        return At<Section>(m_Bytes, m_Header.e_shoff + number * sizeof(Section));
    }

    std::string_view ContentOf(const Section& section) const {
        const std::uint64_t place = std::min<std::uint64_t>(section.sh_offset, m_Bytes.size());
        return m_Bytes.substr(place, section.sh_size);
    }

    std::string_view m_Bytes;
    Header m_Header;
};

}  // namespace

static std::string_view TextAt(std::string_view texts, std::uint64_t place) {
    const std::string_view text = texts.substr(std::min<std::uint64_t>(place, texts.size()));
    return text.substr(0, text.find('\0'));
}

static bool Needs(const Image& image, std::string_view libraryName) {
    bool bNeeds = false;
    image.ForEach<Entry>(SHT_DYNAMIC, [&](const Entry& entry, std::string_view texts) {
        bNeeds |= entry.d_tag == DT_NEEDED && TextAt(texts, entry.d_un.d_val) == libraryName;
    });
    return bNeeds;
}

static std::set<std::string> NamesOf(const Image& image, bool bOffered) {
    std::set<std::string> names;
    image.ForEach<Symbol>(SHT_DYNSYM, [&](const Symbol& symbol, std::string_view texts) {
        const std::string_view name = TextAt(texts, symbol.st_name);
        const bool bDefined = symbol.st_shndx != SHN_UNDEF;
        if (symbol.st_info >> 4U == STB_GLOBAL && bDefined == bOffered && !name.empty()) {
            names.emplace(name);
        }
    });
    return names;
}

bool MayHaveNames(std::string_view start) {
    return start.starts_with(ELFMAG);
}

std::set<std::string> NamesTaken(std::string_view bytes, std::string_view libraryName) {
    const Image image(bytes);
    return Needs(image, libraryName) ? NamesOf(image, false) : std::set<std::string>();
}

std::set<std::string> NamesOffered(std::string_view bytes) {
    return NamesOf(Image(bytes), true);
}
