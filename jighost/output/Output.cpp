// Puts the two buffers beneath the streams, and judges at the end what became of their text.
#include "jighost/output/Output.h"

#include <cerrno>
#include <iostream>
#include <system_error>

#include "jighost/text/HostError.h"
#include "platform/Signals.h"
#include "platform/StandardFiles.h"

Output::Output()
    : m_Data(STANDARD_OUTPUT),
      m_Talk(STANDARD_ERROR),
      m_pFormerData(std::cout.rdbuf(&m_Data)),
      m_pFormerTalk(std::cerr.rdbuf(&m_Talk)) {
    KeepStandardFiles();
    OutliveSizeLimits();
    std::cerr << std::nounitbuf;
}

Output::~Output() {
    std::cout.rdbuf(m_pFormerData);
    std::cerr.rdbuf(m_pFormerTalk);
}

int Output::Finish(int exitCode) {
    std::cout.flush();
    std::cerr.flush();
    if (exitCode >= EXIT_BY_SIGNAL) {
        return exitCode;
    }
    if (m_Data.Error() == EPIPE || m_Talk.Error() == EPIPE) {
        EndByBrokenPipe();
    }
    if (m_Data.Error() != 0) {
        std::cerr << "jighost: can't write standard output: "
                  << std::generic_category().message(m_Data.Error()) << '\n';
        return EXIT_HOST_ERROR;
    }
    return exitCode == EXIT_OK && m_Talk.Error() != 0 ? EXIT_HOST_ERROR : exitCode;
}
