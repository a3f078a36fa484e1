#pragma once

#include <array>
#include <string>

class QSettings;

// The colours of the EV labels: a value below `border1` gets `color1`, below `border2`
// `color2`, and so on up to `border6`; everything else gets `color7`. Switched off, every
// label is transparent. Kept in the settings group "EV_Colors".
class EV_FE_ColorCoding {
public:
    struct Rgb {
        int red = 0;
        int green = 0;
        int blue = 0;
        bool operator==(const Rgb& other) const {
            return red == other.red && green == other.green && blue == other.blue;
        }
    };
    struct Rgba {
        int red = 0;
        int green = 0;
        int blue = 0;
        int alpha = 0;
        bool operator==(const Rgba& other) const {
            return red == other.red && green == other.green && blue == other.blue &&
                   alpha == other.alpha;
        }
    };

    static constexpr int borderCount = 6;
    static constexpr int colorCount = 7;

    // Defaults: on; borders -20, -10, -5, -1, 1, 5; from dark red over white to green.
    EV_FE_ColorCoding();

    bool enabled = true;
    std::array<float, borderCount> borders;
    std::array<Rgb, colorCount> colors;
    // Stored with the others; the labels do not use it.
    bool gradient = false;

    // The group "EV_Colors" of `settings`: `colorCoding`, `border1` to `border6`, `color1` to
    // `color7` (three numbers), `gradient`. A key that is missing, or that holds no value of
    // its kind, keeps its default.
    static EV_FE_ColorCoding load(QSettings& settings);
    void save(QSettings& settings) const;

    // The colour of `value`: the first border above it decides; a border that is no finite
    // number ends the walk with the last colour. Transparent black when switched off.
    Rgba colorFor(float value) const;
    // Each border below the next.
    bool bordersAscend() const;

    // The style sheet of a label in `color`: black text, a thin gray border, the colour as
    // background.
    static std::string styleSheetOf(const Rgba& color);
    // styleSheetOf(colorFor(value)).
    std::string styleSheetFor(float value) const { return styleSheetOf(colorFor(value)); }
    // White, for labels that show no number.
    static std::string whiteStyleSheet();

    bool operator==(const EV_FE_ColorCoding& other) const;
    bool operator!=(const EV_FE_ColorCoding& other) const { return !(*this == other); }
};
