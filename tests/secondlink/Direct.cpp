// second_link_direct LIBRARY MODULE FILE [BEHIND]: writes the transcript of a module that has this
// camera link and no other. With a recorder in the link's place, the link is the one behind it.
#include <fstream>
#include <iostream>

#include "tests/secondlink/Transcript.h"

int main(int argc, char** argv) {
    if (argc != 4 && argc != 5) {
        return 2;
    }
    // It is there under the name that the module asks for.
    HMODULE library = LoadLibraryA(argv[1]);
    if (library == nullptr) {
        std::cerr << "can't load " << argv[1] << '\n';
        return 1;
    }
    HMODULE link = argc == 5 ? LoadLibraryA(argv[4]) : library;
    std::ofstream file(argv[3], std::ios::binary);
    file << Transcript(argv[2], SecondLinkIn(link));
    return file.flush() ? 0 : 1;
}
