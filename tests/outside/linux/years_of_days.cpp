// Writes the INI file that the program leaves after years of use:
//
//     years_of_days FILE [days, 1096 unless told]

#include "support/YearsOfDays.h"

#include <cstdlib>
#include <fstream>

int main(int count, char** arguments) {
    if (count < 2) {
        return EXIT_FAILURE;
    }
    const int days = count > 2 ? std::atoi(arguments[2]) : 1096;
    std::ofstream file(arguments[1], std::ios::binary);
    file << tarvik::iniAfterDays(days);
    file.close();
    return file ? EXIT_SUCCESS : EXIT_FAILURE;
}
