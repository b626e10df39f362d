#include "annotation/toolbar/BackgroundStyleMenu.h"

#include "Toolbar.h"
#include "annotation/toolbar/ToolbarTheme.h"

#include <QAccessible>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

class BackgroundStyleMenuTest : public ToolbarTest {
protected:
    BackgroundStyleMenuTest() { turnFrameOn(); }

    void turnFrameOn()
    {
        m_store->setShowFrame(true);
        settle();
    }

    BackgroundStyleMenu *menu() const
    {
        for (auto *const found : m_host->findChildren<BackgroundStyleMenu *>()) {
            if (found->isVisible())
                return found;
        }
        return nullptr;
    }

    void key(Qt::Key key) { QTest::keyClick(m_host->windowHandle(), key); }

    void clickRow(const char *objectName)
    {
        const ToolbarButton &row = control(objectName);
        QTest::mouseClick(m_host->windowHandle(), Qt::LeftButton, {},
                          row.mapTo(m_host.get(), row.rect().center()));
    }

    QString focusedName() const { return m_host->focusWidget()->objectName(); }
};

TEST_F(BackgroundStyleMenuTest, opensUnderItsButtonWithSixRows)
{
    click("frameBackground");

    ASSERT_NE(menu(), nullptr);
    QStringList labels;
    for (const ToolbarButton *const row : menu()->findChildren<ToolbarButton *>())
        labels.append(row->accessibleName());
    EXPECT_EQ(
        labels,
        (QStringList{u"Auto"_s, u"Sombre"_s, u"Clair"_s, u"Océan"_s, u"Couchant"_s, u"Journal"_s}));
    const QRectF frame = control("frameBackground").frame();
    EXPECT_EQ(menu()->panelGeometry().left(), inHost(frame.topLeft()).x());
    EXPECT_GT(menu()->panelGeometry().top(), inHost(frame.bottomLeft()).y());
    EXPECT_FALSE(menu()->isWindow());
}

TEST_F(BackgroundStyleMenuTest, marksTheCurrentStyle)
{
    m_store->setFrameBackground(FrameBackgroundStyle::Ocean);
    settle();
    click("frameBackground");

    for (const ToolbarButton *const row : menu()->findChildren<ToolbarButton *>())
        EXPECT_EQ(row->isChecked(), row->objectName() == u"frameBackground.ocean"_s);
}

TEST_F(BackgroundStyleMenuTest, choosingWritesTheStoreAndCloses)
{
    for (const auto &style : frameBackgroundStyles) {
        click("frameBackground");
        clickRow(("frameBackground." + QByteArray(style.rawValue.data())).constData());
        EXPECT_EQ(m_store->frameBackground(), style.value);
        EXPECT_EQ(menu(), nullptr);
        settle();
        EXPECT_EQ(control("frameBackground").accessibleDescription(), label(style.value));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(m_host->mouseEvents, 0);
}

TEST_F(BackgroundStyleMenuTest, aPressBesideItClosesItAndDoesNothingElse)
{
    click("frameBackground");

    QTest::mousePress(m_host->windowHandle(), Qt::LeftButton, {}, QPoint(50, 350));
    EXPECT_TRUE(m_host->hasFocus());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::mouseMove(m_host->windowHandle(), QPoint(90, 300));
    QTest::mouseRelease(m_host->windowHandle(), Qt::LeftButton, {}, QPoint(90, 300));
    EXPECT_EQ(menu(), nullptr);
    EXPECT_EQ(m_host->mouseEvents, 0);

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::mouseClick(m_host->windowHandle(), Qt::LeftButton, {}, QPoint(90, 300));
    EXPECT_EQ(m_host->mouseEvents, 2) << "the next one is as ever";
}

TEST_F(BackgroundStyleMenuTest, aPressOnTheToolbarClosesItAndDoesNothingElse)
{
    click("frameBackground");
    click("tool.arrow");

    EXPECT_EQ(menu(), nullptr);
    EXPECT_EQ(m_store->currentTool(), AnnotationTool::Selection);
}

TEST_F(BackgroundStyleMenuTest, aPressOnItsButtonClosesIt)
{
    click("frameBackground");
    click("frameBackground");
    EXPECT_EQ(menu(), nullptr);

    click("frameBackground");
    EXPECT_NE(menu(), nullptr);
}

TEST_F(BackgroundStyleMenuTest, aPressBetweenItsRowsAndItsEdgeKeepsItOpen)
{
    click("frameBackground");
    QTest::mouseClick(m_host->windowHandle(), Qt::LeftButton, {},
                      menu()->panelGeometry().topLeft() + QPoint(20, 2));

    EXPECT_NE(menu(), nullptr);
}

TEST_F(BackgroundStyleMenuTest, turningTheFrameOffClosesIt)
{
    click("frameBackground");
    m_store->setShowFrame(false);
    settle();

    EXPECT_EQ(menu(), nullptr);
    EXPECT_TRUE(m_host->hasFocus());
}

TEST_F(BackgroundStyleMenuTest, escapeClosesItAndNothingElse)
{
    click("frameBackground");
    key(Qt::Key_Escape);

    EXPECT_EQ(menu(), nullptr);
    EXPECT_TRUE(m_host->keys.isEmpty());
    EXPECT_TRUE(m_host->hasFocus());

    key(Qt::Key_Escape);
    EXPECT_EQ(m_host->keys, QList<int>{Qt::Key_Escape});
}

TEST_F(BackgroundStyleMenuTest, tabClosesIt)
{
    click("frameBackground");
    key(Qt::Key_Tab);

    EXPECT_EQ(menu(), nullptr);
    EXPECT_TRUE(m_host->hasFocus());
}

TEST_F(BackgroundStyleMenuTest, openedByTheKeyboardItBeginsAtTheCurrentStyleAndComesBack)
{
    control("frameBackground").setFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    EXPECT_EQ(focusedName(), u"frameBackground.dominantColor"_s);

    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Space);

    EXPECT_EQ(m_store->frameBackground(), FrameBackgroundStyle::Light);
    EXPECT_EQ(menu(), nullptr);
    EXPECT_EQ(focusedName(), u"frameBackground"_s);
}

TEST_F(BackgroundStyleMenuTest, arrowsHomeAndEndWalkItsRowsRoundAndRound)
{
    click("frameBackground");

    key(Qt::Key_Down);
    EXPECT_EQ(focusedName(), u"frameBackground.dominantColor"_s);
    key(Qt::Key_Up);
    EXPECT_EQ(focusedName(), u"frameBackground.newspaper"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(focusedName(), u"frameBackground.dominantColor"_s);
    key(Qt::Key_End);
    EXPECT_EQ(focusedName(), u"frameBackground.newspaper"_s);
    key(Qt::Key_Home);
    EXPECT_EQ(focusedName(), u"frameBackground.dominantColor"_s);
    EXPECT_TRUE(m_host->keys.isEmpty());
}

TEST_F(BackgroundStyleMenuTest, upWithoutARowBeginsAtTheLast)
{
    click("frameBackground");
    key(Qt::Key_Up);

    EXPECT_EQ(focusedName(), u"frameBackground.newspaper"_s);
}

TEST_F(BackgroundStyleMenuTest, returnGoesOnToTheHost)
{
    click("frameBackground");
    key(Qt::Key_Down);
    key(Qt::Key_Return);

    EXPECT_NE(menu(), nullptr);
    EXPECT_EQ(m_store->frameBackground(), FrameBackgroundStyle::DominantColor);
}

TEST_F(BackgroundStyleMenuTest, theRowUnderThePointerIsHighlighted)
{
    click("frameBackground");
    const ToolbarButton &row = control("frameBackground.sunset");
    QTest::mouseMove(m_host->windowHandle(), row.mapTo(m_host.get(), row.rect().center()));

    EXPECT_EQ(focusedName(), u"frameBackground.sunset"_s);
    const QImage drawn = m_host->grab().toImage();
    const QPoint left = row.mapTo(m_host.get(), QPoint(3, row.height() / 2));
    EXPECT_TRUE(areAlike(drawn.pixelColor(left), accentColor));
    const ToolbarButton &other = control("frameBackground.ocean");
    EXPECT_TRUE(areAlike(drawn.pixelColor(other.mapTo(m_host.get(), QPoint(3, other.height() / 2))),
                         themeOf(testPalette()).menuGround));
}

TEST_F(BackgroundStyleMenuTest, staysInsideTheHost)
{
    for (const double units : {1.0, 4.0 / 3}) {
        show(units);
        turnFrameOn();
        m_toolbar->move(m_host->width() - m_toolbar->width() + static_cast<int>(180 * units),
                        m_host->height() - m_toolbar->height() - 5);
        control("frameBackground").click();

        EXPECT_TRUE(m_host->rect().contains(menu()->panelGeometry()));
        EXPECT_LT(menu()->panelGeometry().bottom(), m_toolbar->geometry().top() + 8 * units);
    }
}

TEST_F(BackgroundStyleMenuTest, inAHostThatIsTooLowItsFirstRowsAreSeen)
{
    m_host->resize(1400, 120);
    click("frameBackground");

    EXPECT_GE(menu()->panelGeometry().top(), 0);
}

TEST_F(BackgroundStyleMenuTest, closesWhenItsHostChangesItsSize)
{
    click("frameBackground");
    m_host->resize(1300, 390);

    EXPECT_EQ(menu(), nullptr);
}

TEST_F(BackgroundStyleMenuTest, goesWithTheToolbarAndWithTheHost)
{
    click("frameBackground");
    m_toolbar->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(menu(), nullptr);

    show();
    turnFrameOn();
    click("frameBackground");
    m_host.reset();
}

TEST_F(BackgroundStyleMenuTest, isAMenuToAssistiveTechnology)
{
    m_store->setFrameBackground(FrameBackgroundStyle::Sunset);
    settle();
    click("frameBackground");

    EXPECT_EQ(QAccessible::queryAccessibleInterface(menu())->role(), QAccessible::PopupMenu);
    const auto *const row =
        QAccessible::queryAccessibleInterface(&control("frameBackground.sunset"));
    EXPECT_EQ(row->role(), QAccessible::MenuItem);
    EXPECT_EQ(row->text(QAccessible::Name), u"Couchant"_s);
    EXPECT_TRUE(row->state().checked);
    EXPECT_FALSE(
        QAccessible::queryAccessibleInterface(&control("frameBackground.ocean"))->state().checked);
}

} // namespace
} // namespace lumacap::tests
