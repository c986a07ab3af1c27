// The library put into the body's place, and taken out again.
#include "jighost/session/ChosenLink.h"

#include "bodylnk/OtherLink.h"
#include "jighost/session/LibraryFormat.h"
#include "jighost/text/HostError.h"

ChosenLink::ChosenLink(const std::string& path) {
    if (path.empty()) {
        return;
    }
    RequireLoadable(path, "camera link");
    try {
        OtherLink::Use(path);
    } catch (const std::exception& e) {
        throw HostError(EXIT_NO_MODULE, e.what());
    }
}

ChosenLink::~ChosenLink() {
    OtherLink::Leave();
}
