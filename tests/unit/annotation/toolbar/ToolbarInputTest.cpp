#include "Toolbar.h"

#include <QTest>
#include <QWheelEvent>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

class ToolbarInputTest : public ToolbarTest {
protected:
    QStringList walk(Qt::Key key, Qt::KeyboardModifiers modifiers, int steps)
    {
        QStringList names;
        for (int step = 0; step < steps; ++step) {
            QTest::keyClick(m_host->windowHandle(), key, modifiers);
            names.append(m_host->focusWidget()->objectName());
        }
        return names;
    }

    void turnWheel(QPoint place)
    {
        QWidget *const under = m_host->childAt(place);
        QWheelEvent event(under->mapFrom(m_host.get(), place), m_host->mapToGlobal(place), {},
                          {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(under, &event);
    }

    QStringList focusableNames() const
    {
        QStringList names = shownNames();
        if (!control("undo").isEnabled())
            names.removeOne(u"undo"_s);
        return names;
    }
};

TEST_F(ToolbarInputTest, noMouseEventReachesTheHost)
{
    QWindow *const window = m_host->windowHandle();
    for (const char *const name : {"tool.arrow", "color.blue", "undo", "frame", "confirm"}) {
        const QPoint middle = inHost(control(name).frame().center());
        QTest::mouseMove(window, middle);
        QTest::mouseClick(window, Qt::LeftButton, {}, middle);
        QTest::mouseClick(window, Qt::RightButton, {}, middle);
        QTest::mouseDClick(window, Qt::LeftButton, {}, middle);
    }
    const QPoint between = inHost({6, 22});
    QTest::mouseMove(window, between);
    QTest::mouseClick(window, Qt::LeftButton, {}, between);
    turnWheel(between);
    EXPECT_EQ(m_host->mouseEvents, 0);

    QTest::mouseClick(window, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_GE(m_host->mouseEvents, 2) << "but beside it they do";
}

TEST_F(ToolbarInputTest, theArrowPointerLiesOverTheWholeStrip)
{
    m_host->setCursor(Qt::BlankCursor);

    EXPECT_EQ(m_toolbar->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(control("tool.blur").cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ToolbarInputTest, aClickLeavesTheFocusWhereItIs)
{
    m_store->setShowFrame(true);
    addAnnotation();
    settle();
    for (const QString &name : shownNames()) {
        if (name == u"confirm"_s || name == u"frameBackground"_s)
            continue;
        click(name.toLatin1().constData());
        EXPECT_TRUE(m_host->hasFocus()) << name.toStdString();
    }
}

TEST_F(ToolbarInputTest, aPressOnValiderTakesTheFocusBeforeItConfirms)
{
    bool hadFocus = false;
    m_store->confirmCallback = [&] { hadFocus = !m_host->hasFocus(); };

    click("confirm");

    EXPECT_TRUE(hadFocus);
}

TEST_F(ToolbarInputTest, anotherButtonOnValiderLeavesTheFocusAlone)
{
    QTest::mouseClick(&control("confirm"), Qt::RightButton);

    EXPECT_TRUE(m_host->hasFocus());
}

TEST_F(ToolbarInputTest, tabWalksFromLeftToRight)
{
    addAnnotation();
    m_store->setShowFrame(true);
    m_store->setCurrentTool(AnnotationTool::Magnifier);
    settle();

    const QStringList names = focusableNames();
    EXPECT_EQ(names.count(), 30);
    EXPECT_EQ(walk(Qt::Key_Tab, {}, static_cast<int>(names.count())), names);
}

TEST_F(ToolbarInputTest, shiftTabWalksBackPastWhatIsHiddenOrDisabled)
{
    QStringList names = focusableNames();
    std::ranges::reverse(names);

    EXPECT_EQ(names.count(), 22);
    EXPECT_EQ(walk(Qt::Key_Backtab, Qt::ShiftModifier, static_cast<int>(names.count())), names);
}

TEST_F(ToolbarInputTest, spacePresses)
{
    control("tool.blur").setFocus(Qt::TabFocusReason);
    QTest::keyClick(m_host->windowHandle(), Qt::Key_Space);

    EXPECT_EQ(m_store->currentTool(), AnnotationTool::Blur);
    EXPECT_TRUE(m_host->keys.isEmpty());
}

TEST_F(ToolbarInputTest, otherKeysGoOnToTheHost)
{
    int confirmed = 0;
    m_store->confirmCallback = [&] { ++confirmed; };
    control("confirm").setFocus(Qt::TabFocusReason);
    const QList<Qt::Key> keys{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape,
                              Qt::Key_Left,   Qt::Key_Down,  Qt::Key_Z};
    for (const Qt::Key key : keys)
        QTest::keyClick(m_host->windowHandle(), key);

    EXPECT_EQ(m_host->keys, QList<int>(keys.begin(), keys.end()));
    EXPECT_EQ(confirmed, 0);
    EXPECT_TRUE(control("confirm").hasFocus());
}

} // namespace
} // namespace lumacap::tests
