#include "Toolbar.h"
#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/Text.h"

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

using ToolbarGeometryTest = ToolbarTest;

double textButtonWidth(const QString &text)
{
    return std::ceil(Text(text, 13, FontWeight::Medium).size().width) + 24;
}

/// A control of the one row, or a divider where it has no name.
struct Expected {
    const char *name;
    double width;
    double height;
};

const Expected dividerInRow{nullptr, 1, 22};

std::vector<Expected> toolsAndStyles()
{
    std::vector<Expected> row{{"tool.selection", 28, 28}, dividerInRow};
    for (const char *const tool :
         {"tool.arrow", "tool.rectangle", "tool.ellipse", "tool.numberedPoint", "tool.freehand",
          "tool.text", "tool.magnifier", "tool.blur"})
        row.push_back({tool, 28, 28});
    row.push_back(dividerInRow);
    for (const char *const color : {"color.red", "color.orange", "color.yellow", "color.green",
                                    "color.blue", "color.white", "color.black"})
        row.push_back({color, 16, 16});
    row.insert(row.end(),
               {dividerInRow,
                {"thickness.thin", 18, 2},
                {"thickness.medium", 18, 4},
                {"thickness.thick", 18, 6}});
    return row;
}

std::vector<Expected> rowByDefault()
{
    std::vector<Expected> row = toolsAndStyles();
    row.insert(row.end(),
               {dividerInRow,
                {"undo", 18, 18},
                dividerInRow,
                {"frame", 28, 28},
                {"cancel", textButtonWidth(u"Annuler"_s), 24},
                {"confirm", textButtonWidth(u"Valider"_s), 24}});
    return row;
}

std::vector<Expected> rowWithAll()
{
    std::vector<Expected> row = toolsAndStyles();
    row.insert(row.end(),
               {dividerInRow,
                {"magnifierShape.circle", 28, 28},
                {"magnifierShape.roundedRect", 28, 28},
                {"magnifierShape.rectangle", 28, 28},
                dividerInRow,
                {"magnifierZoom.2x", 28, 28},
                {"magnifierZoom.3x", 28, 28},
                {"magnifierZoom.4x", 28, 28},
                dividerInRow,
                {"undo", 18, 18},
                dividerInRow,
                {"frame", 28, 28},
                {"frameBackground", 39, 28},
                {"cancel", textButtonWidth(u"Annuler"_s), 24},
                {"confirm", textButtonWidth(u"Valider"_s), 24}});
    return row;
}

class ToolbarRowTest : public ToolbarTest {
protected:
    /// That the toolbar shows this row: controls 10 apart and in the middle, dividers where there
    /// should be some, 14 and 8 points around all.
    void expectRow(const std::vector<Expected> &row)
    {
        const QImage drawn = picture();
        double left = 14;
        for (const auto &[name, width, height] : row) {
            const QRectF frame(left, 8 + (28 - height) / 2, width, height);
            if (name != nullptr)
                expectFrame(name, frame);
            else
                expectDivider(drawn, frame.toRect());
            left += width + 10;
        }
        EXPECT_EQ(m_toolbar->fittingSize(10'000), (Size{left - 10 + 14, 44}));
        EXPECT_EQ(m_toolbar->size(), QSizeF(left - 10 + 14, 44).toSize());
    }

private:
    void expectFrame(const char *name, const QRectF &frame)
    {
        const QRectF actual = control(name).frame();
        EXPECT_NEAR(actual.left(), frame.left(), 1e-9) << name;
        EXPECT_NEAR(actual.top(), frame.top(), 1e-9) << name;
        EXPECT_NEAR(actual.width(), frame.width(), 1e-9) << name;
        EXPECT_NEAR(actual.height(), frame.height(), 1e-9) << name;
        EXPECT_TRUE(control(name).isVisible()) << name;
    }

    static void expectDivider(const QImage &drawn, const QRect &frame)
    {
        const QColor color = over(groundColor(), textColor, toolbarlook::dividerOpacity);
        const int x = frame.left();
        for (const int y : {frame.top(), frame.center().y(), frame.bottom()}) {
            EXPECT_TRUE(areAlike(drawn.pixelColor(x, y), color)) << x << ", " << y;
            EXPECT_TRUE(areAlike(drawn.pixelColor(x - 1, y), groundColor()));
            EXPECT_TRUE(areAlike(drawn.pixelColor(x + 1, y), groundColor()));
        }
        EXPECT_TRUE(areAlike(drawn.pixelColor(x, frame.top() - 1), groundColor()));
        EXPECT_TRUE(areAlike(drawn.pixelColor(x, frame.bottom() + 1), groundColor()));
    }
};

TEST_F(ToolbarRowTest, byDefaultIsExact)
{
    expectRow(rowByDefault());
}

TEST_F(ToolbarRowTest, withLoupeChoicesAndFrameBackgroundIsExact)
{
    m_store->setCurrentTool(AnnotationTool::Magnifier);
    m_store->setShowFrame(true);
    settle();
    place(10'000);

    expectRow(rowWithAll());
}

TEST_F(ToolbarGeometryTest, widerThanItsRowKeepsTheRowInTheMiddle)
{
    const double margin = control("tool.selection").frame().left();
    m_toolbar->resize(m_toolbar->width() + 40, m_toolbar->height());

    EXPECT_EQ(control("tool.selection").frame().left(), margin + 20);
}

/// Order of reading: rows from top to bottom, each from left to right.
bool isReadBefore(const QRectF &first, const QRectF &second)
{
    return first.bottom() < second.top() || (first.right() < second.left());
}

class WrappedToolbarTest : public ToolbarTest,
                           public testing::WithParamInterface<std::tuple<bool, bool, double>> {
protected:
    void expectControlsInOrderInside()
    {
        const QRectF inside(0, 0, m_toolbar->width(), m_toolbar->height());
        const double units = m_toolbar->unitsAPoint();
        QRectF previous(-100, -100, 1, 1);
        for (const ToolbarButton *const button : shownControls()) {
            const QRectF frame = button->frame();
            EXPECT_TRUE(inside.contains(QRectF(frame.topLeft() * units, frame.size() * units)));
            EXPECT_TRUE(inside.contains(QRectF(button->geometry())));
            EXPECT_TRUE(isReadBefore(previous, frame));
            previous = frame;
        }
    }

    void expectControlsUnderTheirMiddle()
    {
        for (const ToolbarButton *const button : shownControls())
            EXPECT_EQ(m_host->childAt(inHost(button->frame().center())), button);
    }
};

INSTANTIATE_TEST_SUITE_P(EveryGroup, WrappedToolbarTest,
                         testing::Combine(testing::Bool(), testing::Bool(),
                                          testing::Values(1.0, 4.0 / 3)));

TEST_P(WrappedToolbarTest, keepsAllControlsInsideInOrderAndApartAtAnyWidth)
{
    const auto [hasLoupeChoices, hasFrame, units] = GetParam();
    show(units);
    m_host->resize((QSizeF(1400, 900) * units).toSize());
    if (hasLoupeChoices)
        m_store->setCurrentTool(AnnotationTool::Magnifier);
    m_store->setShowFrame(hasFrame);
    settle();
    std::mt19937 random(11); // NOLINT(bugprone-random-generator-seed): the same cases every time
    for (int round = 0; round < 150; ++round) {
        const double width = std::uniform_real_distribution(200.0, 1400.0)(random);
        place(width);
        EXPECT_LE(m_toolbar->fittingSize(width).width, width + 1) << width;
        expectControlsInOrderInside();
        expectControlsUnderTheirMiddle();
        if (HasFailure())
            FAIL() << "at width " << width;
    }
}

TEST_F(ToolbarGeometryTest, measuresTheSameInPointsWhateverTheUnits)
{
    const Size atOne = m_toolbar->fittingSize(1360);
    show(4.0 / 3);
    const Size atMore = m_toolbar->fittingSize(1360);

    EXPECT_NEAR(atMore.width, atOne.width, 0.75); // whole units
    EXPECT_NEAR(atMore.height, atOne.height, 0.75);
    EXPECT_EQ(control("tool.blur").frame().size(), QSizeF(28, 28));
    EXPECT_GE(control("tool.blur").width(), 28 * 4 / 3);
}

TEST_F(ToolbarGeometryTest, twoDevicePixelsAPointAreDrawnAlikeInEitherUnit)
{
    const auto pixelsOf = [this](double ratio) {
        const QPointF corner = control("tool.selection").frame().topLeft() * 2;
        return picture(ratio).copy(QRect(corner.toPoint(), QSize(56, 56)));
    };
    const QImage atTwo = pixelsOf(2);
    show(4.0 / 3);

    EXPECT_EQ(pixelsOf(1.5), atTwo);
}

} // namespace
} // namespace lumacap::tests
