// A second camera link in the simulated body's place.
#pragma once

#include <filesystem>

#include "bodylnk/OtherLink.h"
#include "tests/secondlink/Transcript.h"
#include "tests/support/SupportLink.h"

class LinkInUse {
  public:
    explicit LinkInUse(const char* pszName) : LinkInUse(LinkFile(pszName), LinkFile(pszName)) {}
    /// The link proper is the one behind the one that is used.
    LinkInUse(const std::filesystem::path& used, const std::filesystem::path& behind)
        : m_Library((OtherLink::Use(used.string()), LoadLibraryA(behind.string().c_str()))),
          link(SecondLinkIn(m_Library)) {
        link = {};
    }
    LinkInUse(const LinkInUse&) = delete;
    LinkInUse& operator=(const LinkInUse&) = delete;
    ~LinkInUse() {
        FreeLibrary(m_Library);
        OtherLink::Leave();
    }

  private:
    HMODULE m_Library;

  public:
    SECOND_LINK& link;
};
