// The choice of who stands behind the camera link.
#include "bodylnk/OtherLink.h"

#include "bodylnk/ForEver.h"
#include "bodylnk/SimulatedLink.h"
#include "passage/OtherLibrary.h"
#include "passage/Passage.h"

// Null: the simulated body.
static SimulatedBody::ForEver<std::unique_ptr<Link::OtherLibrary>> s_Library;

Link::Behind& Link::WhoStandsBehind() {
    return s_Library.object ? *s_Library.object : SimulatedBody::BodyBehindLink();
}

namespace OtherLink {

void Use(const std::string& path) {
    s_Library.object = std::make_unique<Link::OtherLibrary>(path);
}

void Leave() {
    s_Library.object.reset();
}

std::vector<std::string> MissingNames(const std::string& path) {
    return Link::MissingNames(path);
}

}  // namespace OtherLink
