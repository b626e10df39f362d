#include "Toolbar.h"

#include <QAccessible>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

class ToolbarAccessibilityTest : public ToolbarTest {
protected:
    QAccessibleInterface &accessible(const char *objectName) const
    {
        QAccessibleInterface *const found =
            QAccessible::queryAccessibleInterface(&control(objectName));
        if (found == nullptr)
            qFatal("%s is not accessible", objectName);
        return *found;
    }
};

TEST_F(ToolbarAccessibilityTest, everyControlIsNamedInOrder)
{
    m_store->setShowFrame(true);
    m_store->setCurrentTool(AnnotationTool::Magnifier);
    settle();
    QStringList names;
    QAccessibleInterface *const toolbar = QAccessible::queryAccessibleInterface(m_toolbar);
    ASSERT_EQ(toolbar->role(), QAccessible::ToolBar);
    for (int index = 0; index < toolbar->childCount(); ++index)
        names.append(toolbar->child(index)->text(QAccessible::Name));

    const QStringList expected{u"selection"_s,
                               u"arrow"_s,
                               u"rectangle"_s,
                               u"ellipse"_s,
                               u"numberedPoint"_s,
                               u"freehand"_s,
                               u"text"_s,
                               u"magnifier"_s,
                               u"blur"_s,
                               u"red"_s,
                               u"orange"_s,
                               u"yellow"_s,
                               u"green"_s,
                               u"blue"_s,
                               u"white"_s,
                               u"black"_s,
                               u"thin"_s,
                               u"medium"_s,
                               u"thick"_s,
                               u"circle"_s,
                               u"roundedRect"_s,
                               u"rectangle"_s,
                               u"2x"_s,
                               u"3x"_s,
                               u"4x"_s,
                               u"undo"_s,
                               u"frame"_s,
                               u"frameBackground"_s,
                               u"Annuler"_s,
                               u"Valider"_s};
    EXPECT_EQ(names, expected);
}

TEST_F(ToolbarAccessibilityTest, rolesSayWhatAControlIs)
{
    EXPECT_EQ(accessible("tool.arrow").role(), QAccessible::RadioButton);
    EXPECT_EQ(accessible("color.red").role(), QAccessible::RadioButton);
    EXPECT_EQ(accessible("thickness.thin").role(), QAccessible::RadioButton);
    EXPECT_EQ(accessible("magnifierZoom.2x").role(), QAccessible::RadioButton);
    EXPECT_EQ(accessible("frame").role(), QAccessible::CheckBox);
    EXPECT_EQ(accessible("frameBackground").role(), QAccessible::ButtonMenu);
    EXPECT_EQ(accessible("undo").role(), QAccessible::Button);
    EXPECT_EQ(accessible("confirm").role(), QAccessible::Button);
}

TEST_F(ToolbarAccessibilityTest, theCurrentOneIsChecked)
{
    EXPECT_TRUE(accessible("tool.selection").state().checkable);
    EXPECT_TRUE(accessible("tool.selection").state().checked);
    EXPECT_FALSE(accessible("tool.arrow").state().checked);

    m_store->setCurrentTool(AnnotationTool::Arrow);
    settle();

    EXPECT_FALSE(accessible("tool.selection").state().checked);
    EXPECT_TRUE(accessible("tool.arrow").state().checked);
    EXPECT_FALSE(accessible("undo").state().checkable);
}

TEST_F(ToolbarAccessibilityTest, hiddenAndDisabledControlsSaySo)
{
    EXPECT_TRUE(accessible("undo").state().disabled);
    EXPECT_FALSE(accessible("tool.arrow").state().disabled);
    EXPECT_TRUE(accessible("magnifierShape.circle").state().invisible);
    EXPECT_FALSE(accessible("tool.arrow").state().invisible);
}

TEST_F(ToolbarAccessibilityTest, pressingThroughTheInterfaceIsAClick)
{
    QAccessibleActionInterface *const actions = accessible("tool.text").actionInterface();
    ASSERT_NE(actions, nullptr);
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));

    actions->doAction(QAccessibleActionInterface::pressAction());

    EXPECT_EQ(m_store->currentTool(), AnnotationTool::Text);
}

TEST_F(ToolbarAccessibilityTest, aLoupeShapeIsToldFromTheToolOfItsName)
{
    EXPECT_EQ(accessible("tool.rectangle").text(QAccessible::Name),
              accessible("magnifierShape.rectangle").text(QAccessible::Name));
    EXPECT_NE(accessible("tool.rectangle").text(QAccessible::Description),
              accessible("magnifierShape.rectangle").text(QAccessible::Description));
}

TEST_F(ToolbarAccessibilityTest, theMenuButtonSaysWhetherItsMenuIsOpen)
{
    m_store->setShowFrame(true);
    settle();
    EXPECT_TRUE(accessible("frameBackground").state().hasPopup);
    EXPECT_TRUE(accessible("frameBackground").state().collapsed);

    click("frameBackground");

    EXPECT_TRUE(accessible("frameBackground").state().expanded);
}

} // namespace
} // namespace lumacap::tests
