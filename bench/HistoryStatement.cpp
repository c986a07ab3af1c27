// Prints the statement by which `jighost history stats` adds up measurements, for a database's own
// shell.
#include <iostream>

#include "jighost/history/Stats.h"

int main() {
    std::cout << MeasurementStatement({}) << ";\n";
    return 0;
}
