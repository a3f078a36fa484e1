#include "evfe/EV_FE_ColorCoding.h"

#include <QSettings>
#include <QStringList>
#include <QVariant>

#include <cmath>

namespace {

const char* const group = "EV_Colors";

QString key(const char* name, int number) {
    return QStringLiteral("%1%2").arg(QLatin1String(name)).arg(number);
}

// A colour as three numbers; a settings file spells it "128, 0, 0".
QVariant colorValue(const EV_FE_ColorCoding::Rgb& color) {
    return QVariantList{color.red, color.green, color.blue};
}

bool readColor(const QVariant& value, EV_FE_ColorCoding::Rgb& color) {
    const QVariantList parts = value.toList();
    if (parts.size() != 3)
        return false;
    int channels[3];
    for (int i = 0; i < 3; ++i) {
        bool number = false;
        channels[i] = parts[i].toInt(&number);
        if (!number || channels[i] < 0 || channels[i] > 255)
            return false;
    }
    color = {channels[0], channels[1], channels[2]};
    return true;
}

} // namespace

EV_FE_ColorCoding::EV_FE_ColorCoding()
    : borders{-20.0f, -10.0f, -5.0f, -1.0f, 1.0f, 5.0f}, colors{
                                                             Rgb{128, 0, 0},   Rgb{255, 0, 0},
                                                             Rgb{255, 128, 0}, Rgb{255, 255, 255},
                                                             Rgb{192, 255, 0}, Rgb{0, 255, 0},
                                                             Rgb{0, 192, 0}} {}

EV_FE_ColorCoding EV_FE_ColorCoding::load(QSettings& settings) {
    EV_FE_ColorCoding coding;
    settings.beginGroup(QLatin1String(group));
    coding.enabled = settings.value(QStringLiteral("colorCoding"), coding.enabled).toBool();
    for (int i = 0; i < borderCount; ++i) {
        const QVariant value = settings.value(key("border", i + 1));
        bool number = false;
        const float border = value.toFloat(&number);
        if (value.isValid() && number)
            coding.borders[static_cast<std::size_t>(i)] = border;
    }
    for (int i = 0; i < colorCount; ++i) {
        const QVariant value = settings.value(key("color", i + 1));
        if (value.isValid())
            readColor(value, coding.colors[static_cast<std::size_t>(i)]);
    }
    coding.gradient = settings.value(QStringLiteral("gradient"), coding.gradient).toBool();
    settings.endGroup();
    return coding;
}

void EV_FE_ColorCoding::save(QSettings& settings) const {
    settings.beginGroup(QLatin1String(group));
    settings.setValue(QStringLiteral("colorCoding"), enabled);
    for (int i = 0; i < borderCount; ++i)
        settings.setValue(key("border", i + 1),
                          static_cast<double>(borders[static_cast<std::size_t>(i)]));
    for (int i = 0; i < colorCount; ++i)
        settings.setValue(key("color", i + 1), colorValue(colors[static_cast<std::size_t>(i)]));
    settings.setValue(QStringLiteral("gradient"), gradient);
    settings.endGroup();
}

EV_FE_ColorCoding::Rgba EV_FE_ColorCoding::colorFor(float value) const {
    if (!enabled)
        return Rgba{0, 0, 0, 0};
    const auto opaque = [](const Rgb& color) {
        return Rgba{color.red, color.green, color.blue, 255};
    };
    if (value < borders[0])
        return opaque(colors[0]);
    for (std::size_t i = 1; i < borders.size(); ++i) {
        if (!std::isfinite(borders[i]))
            break;
        if (borders[i] > value)
            return opaque(colors[i]);
    }
    return opaque(colors.back());
}

bool EV_FE_ColorCoding::bordersAscend() const {
    for (std::size_t i = 0; i + 1 < borders.size(); ++i) {
        if (!(borders[i] < borders[i + 1]))
            return false;
    }
    return true;
}

std::string EV_FE_ColorCoding::styleSheetOf(const Rgba& color) {
    return "QLabel {color: #000;\nborder: 1px solid #a0a0a0;background-color:rgba(" +
           std::to_string(color.red) + "," + std::to_string(color.green) + "," +
           std::to_string(color.blue) + "," + std::to_string(color.alpha) + ");}";
}

std::string EV_FE_ColorCoding::whiteStyleSheet() {
    return styleSheetOf(Rgba{255, 255, 255, 255});
}

bool EV_FE_ColorCoding::operator==(const EV_FE_ColorCoding& other) const {
    return enabled == other.enabled && borders == other.borders && colors == other.colors &&
           gradient == other.gradient;
}
