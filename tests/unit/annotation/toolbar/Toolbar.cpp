#include "Toolbar.h"

#include "annotation/shapes/RectAnnotation.h"
#include "annotation/toolbar/ToolbarTheme.h"
#include "graphics/ColorMixing.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTest>
#include <QWindow>

#include <cmath>

namespace lumacap::tests {

Host::Host()
{
    setFocusPolicy(Qt::StrongFocus);
    setPalette(testPalette());
    setMouseTracking(true);
}

void Host::mousePressEvent(QMouseEvent * /*event*/)
{
    ++mouseEvents;
}

void Host::mouseReleaseEvent(QMouseEvent * /*event*/)
{
    ++mouseEvents;
}

void Host::mouseMoveEvent(QMouseEvent * /*event*/)
{
    ++mouseEvents;
}

void Host::wheelEvent(QWheelEvent * /*event*/)
{
    ++mouseEvents;
}

void Host::keyPressEvent(QKeyEvent *event)
{
    keys.append(event->key());
}

ToolbarTest::ToolbarTest()
{
    show();
}

void ToolbarTest::show(double unitsAPoint)
{
    FakeDefaultsStore noDefaults;
    showWith(noDefaults, unitsAPoint);
}

void ToolbarTest::showWith(FakeDefaultsStore &defaults, double unitsAPoint)
{
    m_host.reset();
    m_store = std::make_unique<AnnotationStore>(PreferencesStorage(defaults, m_loginItem));
    m_host = std::make_unique<Host>();
    m_host->resize((QSizeF(1400, 400) * unitsAPoint).toSize());
    m_toolbar = new AnnotationToolbarView(*m_store, m_host.get());
    m_toolbar->setUnitsAPoint(unitsAPoint);
    place(1360);
    m_host->show();
    m_host->activateWindow();
    m_host->setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_host.get()));
}

void ToolbarTest::place(double width)
{
    const double units = m_toolbar->unitsAPoint();
    const Size size = m_toolbar->fittingSize(width);
    m_toolbar->setGeometry(static_cast<int>(std::lround(20 * units)),
                           static_cast<int>(std::lround(60 * units)),
                           static_cast<int>(std::lround(size.width * units)),
                           static_cast<int>(std::lround(size.height * units)));
}

void ToolbarTest::settle()
{
    QCoreApplication::sendPostedEvents();
    place(1360);
}

void ToolbarTest::addAnnotation()
{
    m_store->add(std::make_unique<RectAnnotation>(Qt::red, 4, Rect<Canvas>{{5, 5}, {10, 8}}));
}

ToolbarButton &ToolbarTest::control(const char *objectName) const
{
    auto *const found = m_host->findChild<ToolbarButton *>(QString::fromLatin1(objectName));
    if (found == nullptr)
        qFatal("no control %s", objectName);
    return *found;
}

QList<ToolbarButton *> ToolbarTest::shownControls() const
{
    QList<ToolbarButton *> shown;
    for (auto *const button :
         m_toolbar->findChildren<ToolbarButton *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!button->isHidden())
            shown.append(button);
    }
    return shown;
}

QStringList ToolbarTest::shownNames() const
{
    QStringList names;
    for (const ToolbarButton *const button : shownControls())
        names.append(button->objectName());
    return names;
}

void ToolbarTest::click(const char *objectName)
{
    const QPoint middle = inHost(control(objectName).frame().center());
    QTest::mouseClick(m_host->windowHandle(), Qt::LeftButton, {}, middle);
}

QPoint ToolbarTest::inHost(QPointF points) const
{
    return m_toolbar->pos() + (points * m_toolbar->unitsAPoint()).toPoint();
}

QImage ToolbarTest::picture(double ratio) const
{
    QImage image((QSizeF(m_toolbar->size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    m_toolbar->render(&image, {}, {}, QWidget::DrawChildren);
    image.setDevicePixelRatio(1);
    return image;
}

QPalette testPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(240, 240, 240));
    palette.setColor(QPalette::WindowText, textColor);
    palette.setColor(QPalette::Highlight, accentColor);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QColor groundColor()
{
    return themeOf(testPalette()).ground;
}

QColor over(const QColor &ground, const QColor &color, double opacity)
{
    return mixed(ground, color, opacity);
}

testing::AssertionResult areAlike(const QColor &color, const QColor &expected, int tolerance)
{
    const auto differ = [tolerance](int one, int other) {
        return std::abs(one - other) > tolerance;
    };
    if (differ(color.red(), expected.red()) || differ(color.green(), expected.green())
        || differ(color.blue(), expected.blue()) || differ(color.alpha(), expected.alpha()))
        return testing::AssertionFailure()
            << color.name(QColor::HexArgb).toStdString() << " is not "
            << expected.name(QColor::HexArgb).toStdString();
    return testing::AssertionSuccess();
}

} // namespace lumacap::tests
