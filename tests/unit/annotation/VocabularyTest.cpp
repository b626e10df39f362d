#include "annotation/vocabulary/AnnotationColor.h"
#include "annotation/vocabulary/AnnotationTool.h"
#include "annotation/vocabulary/FrameBackgroundStyle.h"
#include "annotation/vocabulary/LineThickness.h"
#include "annotation/vocabulary/MagnifierShape.h"
#include "annotation/vocabulary/MagnifierZoom.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

using NamesAndIcons = std::vector<std::pair<std::string, std::string>>;

template <class Table>
NamesAndIcons namesAndIcons(const Table &table)
{
    NamesAndIcons result;
    for (const auto &row : table)
        result.emplace_back(row.rawValue.data(), row.icon.data());
    return result;
}

TEST(AnnotationTool, hasNineCasesFromSelectionToBlur)
{
    EXPECT_EQ(namesAndIcons(annotationTools),
              (NamesAndIcons{{"selection", "rectangle.dashed"},
                             {"arrow", "arrow.up.right"},
                             {"rectangle", "rectangle"},
                             {"ellipse", "circle"},
                             {"numberedPoint", "1.circle.fill"},
                             {"freehand", "pencil.tip"},
                             {"text", "textformat"},
                             {"magnifier", "magnifyingglass"},
                             {"blur", "eye.slash"}}));
    EXPECT_EQ(annotationTools.front().value, AnnotationTool::Selection);
    EXPECT_EQ(annotationTools.back().value, AnnotationTool::Blur);
}

TEST(AnnotationColor, hasSevenCasesWithTheirColours)
{
    const std::vector<std::pair<std::string, QColor>> expected{
        {"red", {255, 59, 48}},   {"orange", {255, 149, 0}}, {"yellow", {255, 204, 0}},
        {"green", {52, 199, 89}}, {"blue", {0, 122, 255}},   {"white", {255, 255, 255}},
        {"black", {0, 0, 0}}};
    ASSERT_EQ(annotationColors.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(annotationColors.at(i).rawValue.data(), expected.at(i).first);
        EXPECT_EQ(nsColor(annotationColors.at(i).value), expected.at(i).second);
    }
}

TEST(LineThickness, isTwoFourOrSixPoints)
{
    EXPECT_EQ(caseOf(lineThicknesses, 2.0), LineThickness::Thin);
    EXPECT_EQ(caseOf(lineThicknesses, 4.0), LineThickness::Medium);
    EXPECT_EQ(caseOf(lineThicknesses, 6.0), LineThickness::Thick);
    EXPECT_EQ(caseOf(lineThicknesses, 3.0), std::nullopt);
    EXPECT_EQ(caseOf(lineThicknesses, 2.0000001), std::nullopt);
    EXPECT_EQ(lineThicknesses.size(), 3U);
}

TEST(MagnifierZoom, fromAValueBetweenTwoCasesIsNone)
{
    EXPECT_EQ(caseOf(magnifierZooms, 2.5), std::nullopt);
    EXPECT_EQ(caseOf(magnifierZooms, 2.0), MagnifierZoom::X2);
    EXPECT_EQ(caseOf(magnifierZooms, 3.0), MagnifierZoom::X3);
    EXPECT_EQ(caseOf(magnifierZooms, 4.0), MagnifierZoom::X4);
    EXPECT_EQ(magnifierZooms.size(), 3U);
}

TEST(MagnifierZoom, labelIsTheWholeFactorAndAnX)
{
    EXPECT_EQ(label(MagnifierZoom::X2), u"2x"_s);
    EXPECT_EQ(label(MagnifierZoom::X3), u"3x"_s);
    EXPECT_EQ(label(MagnifierZoom::X4), u"4x"_s);
    EXPECT_EQ(zoomLabel(2.75), u"2x"_s);
}

TEST(MagnifierShape, hasThreeCasesWithTheirIcons)
{
    EXPECT_EQ(namesAndIcons(magnifierShapes),
              (NamesAndIcons{{"circle", "circle"},
                             {"roundedRect", "rectangle"},
                             {"rectangle", "rectangle.portrait"}}));
}

TEST(FrameBackgroundStyle, hasSixCasesWithTheirIcons)
{
    EXPECT_EQ(namesAndIcons(frameBackgroundStyles),
              (NamesAndIcons{{"dominantColor", "wand.and.stars"},
                             {"darkSlate", "moon.fill"},
                             {"light", "sun.max.fill"},
                             {"ocean", "water.waves"},
                             {"sunset", "sunset.fill"},
                             {"newspaper", "newspaper.fill"}}));
}

TEST(FrameBackgroundStyle, hasTheLabelsOfTheMenu)
{
    const std::vector<QString> expected{u"Auto"_s,  u"Sombre"_s,   u"Clair"_s,
                                        u"Océan"_s, u"Couchant"_s, u"Journal"_s};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(label(frameBackgroundStyles.at(i).value), expected.at(i));
}

TEST(FrameBackgroundStyle, hasAGradientWhereOneIsFixed)
{
    const auto gradient = [](FrameBackgroundStyle style) {
        return rowOf(frameBackgroundStyles, style).gradient;
    };
    EXPECT_EQ(gradient(FrameBackgroundStyle::DominantColor), std::nullopt);
    EXPECT_EQ(gradient(FrameBackgroundStyle::DarkSlate),
              (GradientColors{{0.12, 0.13, 0.16}, {0.22, 0.23, 0.27}}));
    EXPECT_EQ(gradient(FrameBackgroundStyle::Light),
              (GradientColors{{0.92, 0.93, 0.95}, {0.98, 0.98, 0.99}}));
    EXPECT_EQ(gradient(FrameBackgroundStyle::Ocean),
              (GradientColors{{0.04, 0.12, 0.32}, {0.08, 0.28, 0.52}}));
    EXPECT_EQ(gradient(FrameBackgroundStyle::Sunset),
              (GradientColors{{0.5, 0.08, 0.22}, {0.88, 0.35, 0.12}}));
    EXPECT_EQ(gradient(FrameBackgroundStyle::Newspaper), std::nullopt);
}

TEST(FrameBackgroundStyle, isReadFromExactlyItsStoredText)
{
    EXPECT_EQ(caseOf(frameBackgroundStyles, u"dominantColor"_s),
              FrameBackgroundStyle::DominantColor);
    EXPECT_EQ(caseOf(frameBackgroundStyles, u"darkSlate"_s), FrameBackgroundStyle::DarkSlate);
    EXPECT_EQ(caseOf(frameBackgroundStyles, u"light"_s), FrameBackgroundStyle::Light);
    EXPECT_EQ(caseOf(frameBackgroundStyles, u"ocean"_s), FrameBackgroundStyle::Ocean);
    EXPECT_EQ(caseOf(frameBackgroundStyles, u"sunset"_s), FrameBackgroundStyle::Sunset);
    EXPECT_EQ(caseOf(frameBackgroundStyles, u"newspaper"_s), FrameBackgroundStyle::Newspaper);
}

TEST(FrameBackgroundStyle, capitalisedOrEmptyTextIsNone)
{
    for (const auto &row : frameBackgroundStyles) {
        QString capitalised = row.rawValue;
        capitalised[0] = capitalised[0].toUpper();
        EXPECT_EQ(caseOf(frameBackgroundStyles, capitalised), std::nullopt);
    }
    EXPECT_EQ(caseOf(frameBackgroundStyles, QString()), std::nullopt);
}

TEST(Vocabulary, everyCaseIsReadFromItsOwnRawValue)
{
    const auto readsItself = [](const auto &table) {
        for (const auto &row : table)
            EXPECT_EQ(caseOf(table, row.rawValue), row.value);
    };
    readsItself(annotationTools);
    readsItself(annotationColors);
    readsItself(lineThicknesses);
    readsItself(magnifierZooms);
    readsItself(magnifierShapes);
    readsItself(frameBackgroundStyles);
}

} // namespace
} // namespace lumacap::tests
