// second_link_direct LIBRARY MODULE FILE: writes the transcript of a module that has this camera
// link and no other.
#include <fstream>
#include <iostream>

#include "tests/secondlink/Transcript.h"

int main(int argc, char** argv) {
    if (argc != 4) {
        return 2;
    }
    // It is there under the name that the module asks for.
    HMODULE library = LoadLibraryA(argv[1]);
    if (library == nullptr) {
        std::cerr << "can't load " << argv[1] << '\n';
        return 1;
    }
    std::ofstream file(argv[3], std::ios::binary);
    file << Transcript(argv[2], SecondLinkIn(library));
    return file.flush() ? 0 : 1;
}
