// A program that covers a screen as the product does, and says on standard output what comes of it:
//   overlay-probe pointer          where the pointer is, in global points; then ends
//   overlay-probe cover SCREEN     covers it until Escape is pressed, and stays
//   overlay-probe stop SCREEN      stops itself (SIGSTOP) before the first painting
//   overlay-probe destroy SCREEN   destroys the covering widget at Escape instead
//   overlay-probe replace SCREEN   destroys it at the first Escape and covers with a new one
//   overlay-probe cycle SCREEN N   covers and uncovers N times, each time with a new widget; stays
#include "app/Desktop.h"
#include "app/Session.h"
#include "harness/Pictures.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace lumacap;

namespace {

void say(const QString &line)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

QString text(QPointF point)
{
    return u"%1 %2"_s.arg(point.x()).arg(point.y());
}

/// A child without a picture of its own.
class Child final : public QWidget {
public:
    explicit Child(QWidget *parent)
        : QWidget(parent)
    {
        setGeometry(10, 10, 40, 40);
    }

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        say(u"press in child "_s + text(event->position()));
    }
};

/// Paints a known picture, one pixel of it on one of the screen, and says what it gets.
class Cover final : public QWidget {
public:
    explicit Cover(QSize pixels)
        : m_picture(harness::noisePicture(pixels))
        , m_child(new Child(this))
    {
        setMouseTracking(true);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

    std::function<void()> onEscape;
    std::function<void()> onPainted;

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.scale(1 / devicePixelRatio(), 1 / devicePixelRatio());
        painter.drawImage(0, 0, m_picture);
        if (onPainted)
            onPainted();
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        say(u"key "_s + QKeySequence(event->key()).toString());
        if (event->key() == Qt::Key_Escape)
            onEscape();
    }
    void mousePressEvent(QMouseEvent *event) override
    {
        say(u"press "_s + text(event->scenePosition()));
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        say(u"release "_s + text(event->scenePosition()));
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        say(u"moved "_s + text(event->scenePosition()));
    }
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::ActivationChange)
            say(isActiveWindow() ? u"active"_s : u"inactive"_s);
        QWidget::changeEvent(event);
    }

private:
    QImage m_picture;
    Child *m_child;
};

class Probe final : public QObject {
public:
    Probe(Desktop &desktop, int screen)
        : m_surface(*desktop.overlaySurface)
        , m_screen(desktop.screens->screens().at(static_cast<std::size_t>(screen)))
        , m_unit(desktop.screens->screens().front().backingScaleFactor)
    {
    }

    void cover(const std::function<void()> &onEscape)
    {
        m_cover = std::make_unique<Cover>(
            QSizeF(m_screen.frame.width() * m_unit, m_screen.frame.height() * m_unit).toSize());
        m_cover->onEscape = onEscape;
        m_surface.cover(*m_cover, m_screen, [this] {
            say(m_cover->isVisible() ? u"changed"_s : u"changed while hidden"_s);
            uncover();
        });
        say(u"covered"_s);
    }
    void uncover()
    {
        m_surface.uncover(*m_cover);
        say(u"uncovered"_s);
    }
    void destroy()
    {
        m_cover.reset();
        say(u"destroyed"_s);
    }
    void cycle(int times)
    {
        if (times == 0) {
            m_cover.reset();
            say(u"done"_s);
            return;
        }
        cover([] { });
        m_cover->onPainted = [this, times] {
            m_cover->onPainted = nullptr;
            QTimer::singleShot(0, this, [this, times] {
                uncover();
                cycle(times - 1);
            });
        };
    }

private:
    OverlaySurface &m_surface;
    Screen m_screen;
    double m_unit;
    std::unique_ptr<Cover> m_cover;
};

void later(QObject &context, const std::function<void()> &action)
{
    QMetaObject::invokeMethod(&context, action, Qt::QueuedConnection);
}

} // namespace

int main(int argc, char **argv)
{
    Session::prepareToolkit();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList words = QApplication::arguments();
    const Session session = Session::open();
    Desktop desktop = makeDesktop(session);
    if (words.value(1) == "pointer"_L1) {
        const auto point = desktop.screens->pointerPosition();
        say(point ? text({point->x, point->y}) : u"nowhere"_s);
        return EXIT_SUCCESS;
    }
    Probe probe(desktop, words.value(2).toInt());
    const auto uncover = [&probe] { probe.uncover(); };
    const auto destroy = [&probe] { later(probe, [&probe] { probe.destroy(); }); };
    const auto replace = [&probe, uncover] {
        later(probe, [&probe, uncover] {
            probe.destroy();
            probe.cover(uncover);
        });
    };
    if (words.value(1) == "cycle"_L1)
        later(probe, [&probe, times = words.value(3).toInt()] { probe.cycle(times); });
    else if (words.value(1) == "destroy"_L1)
        probe.cover(destroy);
    else if (words.value(1) == "replace"_L1)
        probe.cover(replace);
    else
        probe.cover(uncover);
    if (words.value(1) == "stop"_L1)
        std::raise(SIGSTOP);
    return QApplication::exec();
}
