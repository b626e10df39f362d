#include "everywhere/EverywhereFixture.h"

#include "annotation/AnnotationRenderer.h"
#include "harness/Captures.h"
#include "harness/WaitFor.h"

#include <algorithm>
#include <cmath>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

// The pointer rests at the upper left, and reaches no further than this, in units.
constexpr QPoint restingPlace(3, 3);
constexpr int pointerReach = 60;
// Where nothing but the overlay is ever put over the picture: the lower left corner, in pixels.
constexpr int cornerSize = 30;

} // namespace

EverywhereFixture::EverywhereFixture()
    : m_desktop(GetParam().make())
    , m_outputs(m_desktop->outputs())
{
    AccessibleControls::enable(*m_desktop);
    for (const TestOutput &output : m_outputs) {
        m_pictures.push_back(noisePicture(output.pixels));
        m_desktop->paint(output.name, m_pictures.back());
    }
    restPointerOn(0);
}

EverywhereFixture::~EverywhereFixture() = default;

void EverywhereFixture::startAgent(Settings settings)
{
    settings[u"saveToFile"_s] = u"true"_s;
    settings[u"saveDirectory"_s] = m_desktop->folder(u"pictures"_s);
    writeSettings(*m_desktop, settings);
    m_agent = std::make_unique<Agent>(*m_desktop);
    m_agent->requireReady();
}

void EverywhereFixture::restPointerOn(std::size_t index)
{
    hands().moveTo(output(index).frame.topLeft() + restingPlace);
}

void EverywhereFixture::openOverlay(std::size_t index)
{
    restPointerOn(index);
    ASSERT_TRUE(agent().activate(u"selection"_s));
    ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
}

bool EverywhereFixture::overlayIsUp()
{
    for (std::size_t index = 0; index < m_outputs.size(); ++index) {
        const QSize size = output(index).pixels;
        const QRect corner(0, size.height() - cornerSize, cornerSize, cornerSize);
        const QImage seen = m_desktop->look(output(index).name);
        if (differingPixels(m_pictures.at(index).copy(corner), seen.copy(corner)) > 0)
            return true;
    }
    return false;
}

void EverywhereFixture::endOverlay(std::uint32_t key)
{
    ASSERT_TRUE(waitFor([this, key] {
        hands().press({key});
        return waitFor([this] { return !overlayIsUp(); }, std::chrono::seconds(4));
    }));
}

AccessibleControls &EverywhereFixture::controls()
{
    if (!m_controls)
        m_controls = std::make_unique<AccessibleControls>(*m_desktop);
    return *m_controls;
}

void EverywhereFixture::awaitKeyboard()
{
    ASSERT_TRUE(waitFor([this] { return controls().hasActiveWindow(); }));
}

void EverywhereFixture::use(const QString &control)
{
    const auto found = controls().find(control);
    ASSERT_TRUE(found) << control.toStdString();
    hands().click(found->place.center());
}

QStringList EverywhereFixture::files() const
{
    return capturesIn(m_desktop->folder(u"pictures"_s));
}

QImage EverywhereFixture::savedPicture()
{
    if (!waitFor([this] { return files().size() == 1 && !overlayIsUp(); }))
        return {};
    return pictureIn(*m_desktop, files().first());
}

QImage EverywhereFixture::clipboardPicture()
{
    return harness::clipboardPicture(*m_desktop);
}

double EverywhereFixture::scaleOf(std::size_t index) const
{
    return static_cast<double>(output(index).pixels.width()) / output(index).frame.width();
}

QImage EverywhereFixture::shown(const QRect &area, std::size_t index) const
{
    const double scale = scaleOf(index);
    const QPoint origin = output(index).frame.topLeft();
    const auto pixels = [scale](int units) { return static_cast<int>(std::lround(units * scale)); };
    return m_pictures.at(index).copy(pixels(area.x() - origin.x()), pixels(area.y() - origin.y()),
                                     pixels(area.width()), pixels(area.height()));
}

Point<Canvas> EverywhereFixture::canvas(QPoint place) const
{
    const double factor = std::max(1.0, std::floor(scaleOf(0) + 0.5));
    const double pointsAUnit = scaleOf(0) / factor;
    return {place.x() * pointsAUnit, (output(0).frame.height() - place.y()) * pointsAUnit};
}

QImage EverywhereFixture::shownWith(const QRect &area, const Marks &marks) const
{
    const int factor = std::max(1, static_cast<int>(std::floor(scaleOf(0) + 0.5)));
    const QImage frozen = m_pictures.front().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const Size size{static_cast<double>(frozen.width()) / factor,
                    static_cast<double>(frozen.height()) / factor};
    const Point<Canvas> corner = canvas(area.topLeft() + QPoint(0, area.height()));
    const Point<Canvas> opposite = canvas(area.topLeft() + QPoint(area.width(), 0));
    const Rect<Canvas> selected{corner, opposite - corner};
    return AnnotationRenderer::renderFinalImage(frozen, selected, marks, size, factor)
        .value_or(QImage());
}

testing::AssertionResult EverywhereFixture::equalsOutput(std::size_t index,
                                                         const QImage &seen) const
{
    const QImage &expected = m_pictures.at(index);
    if (seen.size() != expected.size())
        return testing::AssertionFailure() << "of " << seen.width() << " x " << seen.height();
    const int reach = static_cast<int>(pointerReach * scaleOf(index));
    const QRect below(0, reach, expected.width(), expected.height() - reach);
    const QRect beside(reach, 0, expected.width() - reach, reach);
    for (const QRect &area : {below, beside}) {
        if (const auto different = differingPixels(expected.copy(area), seen.copy(area)))
            return testing::AssertionFailure() << different << " pixels differ";
    }
    return testing::AssertionSuccess();
}

} // namespace lumacap::harness
