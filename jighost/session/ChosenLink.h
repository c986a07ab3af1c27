// The camera link that a person names, in the simulated body's place.
#pragma once

#include <string>

class ChosenLink {
  public:
    /// From now on the module works with the library at the path; with the simulated body if the
    /// path is empty. To be built ahead of the module. Throws EXIT_NO_MODULE for a library that
    /// can't be loaded or that lacks functions of the camera link.
    explicit ChosenLink(const std::string& path);
    ~ChosenLink();  ///< behind the module: the body is back in its place
    ChosenLink(const ChosenLink&) = delete;
    ChosenLink& operator=(const ChosenLink&) = delete;
};
