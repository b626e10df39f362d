#pragma once

#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeFolderPanel.h"
#include "fakes/FakeHotkeyService.h"
#include "fakes/FakeLoginItem.h"
#include "preferences/look/ChoiceGroup.h"
#include "preferences/look/SwitchControl.h"
#include "preferences/recorder/KeyRecorderView.h"
#include "preferences/storage/PreferencesStorage.h"
#include "preferences/window/PreferencesWindow.h"
#include "preferences/window/PreferencesWindowController.h"

#include <QImage>

#include <gmock/gmock.h>

#include <memory>

namespace lumacap::tests {

/// The preferences window over services in memory.
class PreferencesTest : public testing::Test {
protected:
    PreferencesTest();

    /// Opens the window, or brings it to the front.
    void show();
    void close();

    template <class Control>
    Control &control(const char *name) const
    {
        auto *const found = m_controller->window()->findChild<Control *>(QString::fromLatin1(name));
        if (found == nullptr)
            qFatal("no control %s", name);
        return *found;
    }
    SwitchControl &switchOf(const char *key) const { return control<SwitchControl>(key); }
    ChoiceGroup &choices(const char *key) const { return control<ChoiceGroup>(key); }
    KeyRecorderView &recorder(const char *key) const { return control<KeyRecorderView>(key); }
    void click(QWidget &widget) const;
    void choose(const char *key, std::size_t index) const;
    void record(const char *key, Qt::KeyboardModifiers modifiers) const;

    /// The whole content, in units of the window, from the top of the sections on.
    QImage contentPicture() const;
    QWidget &content() const;

    FakeDefaultsStore m_defaults;
    FakeLoginItem m_loginItem;
    FakeHotkeyService m_hotkeyService;
    FakeFolderPanel m_folderPanel;
    PreferencesStorage m_preferences{m_defaults, m_loginItem};
    int m_hotkeyChanges = 0;
    KeyCombo m_fullScreenAtChange; ///< what was stored when the last one was reported
    std::unique_ptr<PreferencesWindowController> m_controller;
};

} // namespace lumacap::tests
