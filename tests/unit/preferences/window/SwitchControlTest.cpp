#include "preferences/look/SwitchControl.h"

#include <QApplication>
#include <QProxyStyle>
#include <QTest>

#include <gmock/gmock.h>

namespace lumacap::tests {
namespace {

/// A desktop that wants movement, or none.
class MovingStyle final : public QProxyStyle {
public:
    explicit MovingStyle(int milliseconds)
        : m_milliseconds(milliseconds)
    {
    }
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override
    {
        return hint == SH_Widget_Animation_Duration
            ? m_milliseconds
            : QProxyStyle::styleHint(hint, option, widget, returned);
    }

private:
    int m_milliseconds;
};

struct SwitchControlTest : testing::Test {
    void use(MovingStyle &style)
    {
        control.setStyle(&style);
        control.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&control));
    }

    MovingStyle moving{200};
    MovingStyle still{0};
    SwitchControl control{QStringLiteral("Fichier"), nullptr};
};

TEST_F(SwitchControlTest, slidesOverWhenItIsTurnedAndThenRests)
{
    use(moving);
    QTest::mouseClick(&control, Qt::LeftButton);
    EXPECT_TRUE(control.isChecked());
    EXPECT_TRUE(control.isMoving());
    EXPECT_LT(control.position(), 1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return control.position() == 1; }));
    EXPECT_FALSE(control.isMoving());
}

TEST_F(SwitchControlTest, turnsBackFromWhereItIs)
{
    use(moving);
    QTest::mouseClick(&control, Qt::LeftButton);
    QTest::mouseClick(&control, Qt::LeftButton);
    EXPECT_FALSE(control.isChecked());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !control.isMoving(); }));
    EXPECT_EQ(control.position(), 0);
}

TEST_F(SwitchControlTest, jumpsWhereTheDesktopWantsNoMovement)
{
    use(still);
    QTest::mouseClick(&control, Qt::LeftButton);
    EXPECT_EQ(control.position(), 1);
    EXPECT_FALSE(control.isMoving());
}

TEST_F(SwitchControlTest, isSetWithoutMovingBeforeItIsShown)
{
    control.setStyle(&moving);
    control.setChecked(true);
    EXPECT_EQ(control.position(), 1);
    EXPECT_FALSE(control.isMoving());
}

TEST_F(SwitchControlTest, isAtRestOnceItIsHidden)
{
    use(moving);
    QTest::mouseClick(&control, Qt::LeftButton);
    control.hide();
    EXPECT_FALSE(control.isMoving());
    EXPECT_EQ(control.position(), 1);
}

} // namespace
} // namespace lumacap::tests
