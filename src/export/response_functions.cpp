// SPDX-License-Identifier: MIT
#include "export/response_functions.h"

#include <iterator>

namespace {

/// To the letter, misspellings too: so the files are called.
constexpr const char* NAMES[] = {
    "Advantix-100CD.txt",
    "Advantix-200CD.txt",
    "Advantix-400CD.txt",
    "agfachrome-ctpecisa-200CD.txt",
    "agfachrome-ctprecisa-100CD.txt",
    "agfachrome-rsx2-050CD.txt",
    "agfachrome-rsx2-100CD.txt",
    "agfachrome-rsx2-200CD.txt",
    "agfacolor-futura-100CD.txt",
    "agfacolor-futura-200CD.txt",
    "agfacolor-futura-400CD.txt",
    "agfacolor-futuraII-100CD.txt",
    "agfacolor-futuraII-200CD.txt",
    "agfacolor-futuraII-400C.txt",
    "agfacolor-hdc-100-plusCD.txt",
    "agfacolor-hdc-200-plusCD.txt",
    "agfacolor-hdc-400-plusCD.txt",
    "agfacolor-optimaII-100CD.txt",
    "agfacolor-optimaII-200CD.txt",
    "agfacolor-ultra-050-CD.txt",
    "agfacolor-vista-100CD.txt",
    "agfacolor-vista-200CD.txt",
    "agfacolor-vista-400CD.txt",
    "agfacolor-vista-800CD.txt",
    "agfapan-apx-025CD.txt",
    "agfapan-apx-100CD.txt",
    "agfapan-apx-400-sCD.txt",
    "agfapan-apx-400CD.txt",
    "dscs315.txt",
    "dscs315_2.txt",
    "dscs315_3.txt",
    "dscs315_4.txt",
    "dscs315_5.txt",
    "dscs315_6.txt",
    "Ektachrome-100-plusCD.txt",
    "Ektachrome-100CD.txt",
    "Ektachrome-320TCD.txt",
    "Ektachrome-400XCD.txt",
    "Ektachrome-64CD.txt",
    "Ektachrome-64TCD.txt",
    "Ektachrome-E100SCD.txt",
    "F125CD.txt",
    "F250CD.txt",
    "F400CD.txt",
    "FCICD.txt",
    "FP2900Z.txt",
    "Gold-100CD.txt",
    "Gold-200CD.txt",
    "Kodachrome-200CD.txt",
    "Kodachrome-25.txt",
    "Kodachrome-64CD.txt",
    "Max-Zoom-800CD.txt",
    "Portra-100TCD.txt",
    "Portra-160NCCD.txt",
    "Portra-160VCCD.txt",
    "Portra-400NCCD.txt",
    "Portra-400VCCD.txt",
    "Portra-800CD.txt",
};

} // namespace

const char* responseFunctionName(int32_t index) {
    return index >= 0 && index < int32_t(std::size(NAMES)) ? NAMES[index] : nullptr;
}

Quenza::String responseFunctionPath(int32_t index) {
    return Quenza::String("data/camera_response_functions/") + responseFunctionName(index);
}

int32_t responseFunctionIndex(const Quenza::String& path) {
    for (int32_t i = 0; responseFunctionName(i); ++i) {
        if (responseFunctionPath(i) == path) {
            return i;
        }
    }
    return -1;
}
