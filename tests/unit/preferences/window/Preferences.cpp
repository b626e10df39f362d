#include "Preferences.h"

#include "Keys.h"
#include "preferences/window/PreferencesView.h"
#include "preferences/window/SectionColumn.h"

#include <QTest>

namespace lumacap::tests {

PreferencesTest::PreferencesTest()
    : m_controller(std::make_unique<PreferencesWindowController>(
          PreferencesServices{m_preferences, m_hotkeyService, m_folderPanel}, [this] {
              ++m_hotkeyChanges;
              m_fullScreenAtChange = m_preferences.fullScreenHotkey();
          }))
{
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
}

void PreferencesTest::show()
{
    m_controller->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_controller->window()));
}

void PreferencesTest::close()
{
    m_controller->window()->close();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_controller->window() == nullptr; }));
}

void PreferencesTest::click(QWidget &widget) const
{
    QTest::mouseClick(&widget, Qt::LeftButton);
    QCoreApplication::processEvents();
}

void PreferencesTest::choose(const char *key, std::size_t index) const
{
    click(*choices(key).choices().at(index));
}

void PreferencesTest::record(const char *key, Qt::KeyboardModifiers modifiers) const
{
    click(recorder(key));
    type(letterA, modifiers);
}

QWidget &PreferencesTest::content() const
{
    return *m_controller->window()->view().column().widget();
}

QImage PreferencesTest::contentPicture() const
{
    return content().grab().toImage();
}

} // namespace lumacap::tests
