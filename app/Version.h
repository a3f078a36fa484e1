#pragma once

// The program version: one single-precision constant from which every version text and
// every version comparison derives (the server's version, `releaseNoteVersion`).

#include <iomanip>
#include <limits>
#include <sstream>
#include <string>

namespace Version {

// Bit pattern 0x3F99DCC6. Compare floats with floats: widening to double first would make
// a server's "1.20205" (parsed as float) equal, as it must.
constexpr float program = 1.20205f;

// Default stream formatting (six significant digits): "1.20205". Used in crash reports.
inline std::string crashReportText() {
    std::ostringstream stream;
    stream << program;
    return stream.str();
}

// Nine significant digits, enough to read the float back exactly: "1.20204997". The
// `version` attribute of analysis files.
inline std::string fileText() {
    std::ostringstream stream;
    stream << std::setprecision(std::numeric_limits<float>::max_digits10) << program;
    return stream.str();
}

// Three decimals with the last digit moved behind a dot of its own: 1.202 -> "v1.20.2".
// The About box.
inline std::string aboutText() {
    std::ostringstream stream;
    stream << std::fixed << std::setprecision(3) << program;
    const std::string threeDecimals = stream.str();
    return "v" + threeDecimals.substr(0, threeDecimals.size() - 1) + "." + threeDecimals.back();
}

} // namespace Version
