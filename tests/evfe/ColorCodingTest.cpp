#include "evfe/EV_FE_ColorCoding.h"

#include <QSettings>
#include <gtest/gtest.h>

#include <limits>

namespace {

using Rgba = EV_FE_ColorCoding::Rgba;

void clearSettings() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.clear();
    settings.sync();
}

TEST(EV_FE_ColorCoding, DefaultsAreTheDocumentedOnes) {
    const EV_FE_ColorCoding coding;
    EXPECT_TRUE(coding.enabled);
    EXPECT_FALSE(coding.gradient);
    EXPECT_EQ(coding.borders, (std::array<float, 6>{-20, -10, -5, -1, 1, 5}));
    const std::array<EV_FE_ColorCoding::Rgb, 7> colors = {{{128, 0, 0},
                                                           {255, 0, 0},
                                                           {255, 128, 0},
                                                           {255, 255, 255},
                                                           {192, 255, 0},
                                                           {0, 255, 0},
                                                           {0, 192, 0}}};
    EXPECT_EQ(coding.colors, colors);
}

TEST(EV_FE_ColorCoding, AValueTakesTheColourOfTheFirstBorderAboveIt) {
    const EV_FE_ColorCoding coding;
    EXPECT_EQ(coding.colorFor(-25.0f), (Rgba{128, 0, 0, 255}));
    EXPECT_EQ(coding.colorFor(-20.0f), (Rgba{255, 0, 0, 255})); // a border is not below itself
    EXPECT_EQ(coding.colorFor(-10.5f), (Rgba{255, 0, 0, 255}));
    EXPECT_EQ(coding.colorFor(-10.0f), (Rgba{255, 128, 0, 255}));
    EXPECT_EQ(coding.colorFor(-1.01f), (Rgba{255, 255, 255, 255}));
    EXPECT_EQ(coding.colorFor(-1.0f), (Rgba{192, 255, 0, 255}));
    EXPECT_EQ(coding.colorFor(0.0f), (Rgba{192, 255, 0, 255}));
    EXPECT_EQ(coding.colorFor(1.0f), (Rgba{0, 255, 0, 255}));
    EXPECT_EQ(coding.colorFor(4.99f), (Rgba{0, 255, 0, 255}));
    EXPECT_EQ(coding.colorFor(5.0f), (Rgba{0, 192, 0, 255}));
    EXPECT_EQ(coding.colorFor(1e30f), (Rgba{0, 192, 0, 255}));
}

TEST(EV_FE_ColorCoding, ABorderThatIsNoFiniteNumberEndsTheWalk) {
    EV_FE_ColorCoding coding;
    coding.borders[2] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(coding.colorFor(-15.0f), (Rgba{255, 0, 0, 255}));
    EXPECT_EQ(coding.colorFor(-7.0f), (Rgba{0, 192, 0, 255}));
    EXPECT_EQ(coding.colorFor(0.0f), (Rgba{0, 192, 0, 255}));
    coding.borders[2] = std::numeric_limits<float>::infinity();
    EXPECT_EQ(coding.colorFor(0.0f), (Rgba{0, 192, 0, 255}));
}

TEST(EV_FE_ColorCoding, SwitchedOffEveryLabelIsTransparent) {
    EV_FE_ColorCoding coding;
    coding.enabled = false;
    EXPECT_EQ(coding.colorFor(-100.0f), (Rgba{0, 0, 0, 0}));
    EXPECT_EQ(coding.styleSheetFor(3.0f),
              "QLabel {color: #000;\nborder: 1px solid #a0a0a0;background-color:rgba(0,0,0,0);}");
}

TEST(EV_FE_ColorCoding, StyleSheetsHaveTheFixedStart) {
    const EV_FE_ColorCoding coding;
    EXPECT_EQ(coding.styleSheetFor(-3.0f), "QLabel {color: #000;\nborder: 1px solid "
                                           "#a0a0a0;background-color:rgba(255,255,255,255);}");
    EXPECT_EQ(coding.styleSheetFor(-30.0f), "QLabel {color: #000;\nborder: 1px solid "
                                            "#a0a0a0;background-color:rgba(128,0,0,255);}");
    EXPECT_EQ(
        EV_FE_ColorCoding::whiteStyleSheet(),
        "QLabel {color: #000;\nborder: 1px solid #a0a0a0;background-color:rgba(255,255,255,255);}");
}

TEST(EV_FE_ColorCoding, BordersMustAscendStrictly) {
    EV_FE_ColorCoding coding;
    EXPECT_TRUE(coding.bordersAscend());
    coding.borders[3] = coding.borders[4];
    EXPECT_FALSE(coding.bordersAscend());
    coding.borders[3] = 3.0f;
    EXPECT_FALSE(coding.bordersAscend());
    coding.borders[3] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(coding.bordersAscend());
}

TEST(EV_FE_ColorCoding, WithoutSettingsTheDefaultsAreRead) {
    clearSettings();
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EXPECT_EQ(EV_FE_ColorCoding::load(settings), EV_FE_ColorCoding());
}

TEST(EV_FE_ColorCoding, SavedSettingsReadBackUnderTheirKeys) {
    clearSettings();
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EV_FE_ColorCoding coding;
    coding.enabled = false;
    coding.gradient = true;
    coding.borders = {-8.5f, -4, -2, 0.1f, 2, 9};
    coding.colors[0] = {1, 2, 3};
    coding.colors[6] = {250, 251, 252};
    coding.save(settings);
    settings.sync();
    EXPECT_EQ(EV_FE_ColorCoding::load(settings), coding);
    EXPECT_EQ(settings.value(QStringLiteral("EV_Colors/colorCoding")).toBool(), false);
    EXPECT_EQ(settings.value(QStringLiteral("EV_Colors/border1")).toDouble(), -8.5);
    const QVariantList color7 = settings.value(QStringLiteral("EV_Colors/color7")).toList();
    ASSERT_EQ(color7.size(), 3);
    EXPECT_EQ(color7[2].toInt(), 252);
    // A second settings object reads what the file holds.
    QSettings again(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EXPECT_EQ(EV_FE_ColorCoding::load(again), coding);
}

TEST(EV_FE_ColorCoding, ValuesOfTheWrongKindKeepTheirDefaults) {
    clearSettings();
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.setValue(QStringLiteral("EV_Colors/border2"), QStringLiteral("low"));
    settings.setValue(QStringLiteral("EV_Colors/color3"), QStringLiteral("red"));
    settings.setValue(QStringLiteral("EV_Colors/color4"), QVariantList{1, 2, 300});
    settings.setValue(QStringLiteral("EV_Colors/border5"), 1.5);
    const EV_FE_ColorCoding coding = EV_FE_ColorCoding::load(settings);
    const EV_FE_ColorCoding defaults;
    EXPECT_EQ(coding.borders[1], defaults.borders[1]);
    EXPECT_EQ(coding.colors[2], defaults.colors[2]);
    EXPECT_EQ(coding.colors[3], defaults.colors[3]);
    EXPECT_EQ(coding.borders[4], 1.5f);
}

} // namespace
