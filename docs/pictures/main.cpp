// SPDX-License-Identifier: MIT

// Writes the pictures of the manual, SVG files, into a folder.

#include "docs/pictures/pictures.h"

#include <fstream>
#include <iostream>

int main(int argc, char** argv) {
    using namespace kvpictures;
    if (argc != 2) {
        std::cerr << "usage: kvgeom_pictures FOLDER\n";
        return 2;
    }
    const std::pair<const char*, Picture (*)()> pictures[] = {
        {"box", DrawBox},
        {"box-union", DrawBoxUnion},
        {"box-mapping", DrawBoxMapping},
        {"box-clipping", DrawBoxClipping},
        {"clip-volume", DrawClipVolume},
        {"clip-volume-test", DrawClipVolumeTest},
        {"bore-line", DrawBoreLine},
        {"bore-line-test", DrawBoreLineTest},
        {"bore-line-clipping", DrawBoreLineClipping},
        {"bore-cone", DrawBoreCone},
        {"fence", DrawFence},
        {"frustum", DrawFrustum},
        {"prism", DrawPrism},
        {"handedness", DrawHandedness},
        {"rows", DrawRows},
        {"forms", DrawForms},
        {"products", DrawProducts},
        {"angles", DrawAngles},
    };
    for (const auto& [name, draw] : pictures) {
        std::ofstream file(std::string(argv[1]) + "/" + name + ".svg", std::ios::binary);
        file << draw().Svg();
        if (!file.flush()) {
            std::cerr << name << ".svg can't be written\n";
            return 1;
        }
    }
    return 0;
}
