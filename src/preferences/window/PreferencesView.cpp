#include "preferences/window/PreferencesView.h"

#include "platform/DefaultsStore.h"
#include "platform/FolderPanel.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsText.h"
#include "preferences/look/PrefsTheme.h"
#include "preferences/look/SwitchControl.h"
#include "preferences/recorder/KeyRecorderView.h"
#include "preferences/storage/PreferencesStorage.h"
#include "preferences/window/BackgroundTiles.h"
#include "preferences/window/OutputDetails.h"
#include "preferences/window/PrefsDivider.h"
#include "preferences/window/PrefsRow.h"
#include "preferences/window/PrefsSection.h"
#include "preferences/window/SectionColumn.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

#include <memory>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

constexpr TextFont caption{prefslook::captionFont, FontWeight::Regular};
constexpr TextFont subheadline{prefslook::subheadlineFont, FontWeight::Regular};

/// Stores a setting. A failed write is silent: the control stays as the user set it.
void store(const PreferencesStorage &preferences, const QString &key, const DefaultsValue &value)
{
    std::ignore = preferences.defaults().set(key, value);
}

/// A column around `content`, with some padding above and below it.
QWidget *padded(QWidget *content, int top, int bottom, QWidget *parent)
{
    auto *const around = new QWidget(parent);
    auto *const layout = new QVBoxLayout(around);
    layout->setContentsMargins(0, top, 0, bottom);
    layout->addWidget(content);
    return around;
}

QString versionText()
{
    const QString version = QCoreApplication::applicationVersion();
    return u"Lumacap v"_s + (version.isEmpty() ? u"?"_s : version);
}

} // namespace

PreferencesView::PreferencesView(const PreferencesServices &services,
                                 std::function<void()> onHotkeysChanged, QWidget *parent)
    : QWidget(parent)
    , m_services(services)
    , m_onHotkeysChanged(std::move(onHotkeysChanged))
    , m_silence(services.hotkeyService)
    , m_saveDirectory(services.preferences.saveDirectory())
    , m_column(new SectionColumn(this))
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (PrefsSection *const section :
         {generalSection(), shortcutsSection(), captureSection(), outputSection()})
        m_column->add(section);
    layout->addWidget(m_column, 1);
    layout->addWidget(new PrefsDivider(this));
    layout->addWidget(footer());
}

/// The recorders borrow the silence, and a widget's children go after its members.
PreferencesView::~PreferencesView()
{
    const std::unique_ptr<SectionColumn> before(m_column);
}

PrefsSection *PreferencesView::generalSection()
{
    PreferencesStorage &preferences = m_services.preferences;
    auto *const section =
        new PrefsSection(u"gearshape"_s, systemcolor::gray, u"General"_s, m_column);
    section->add(switchRow(
        u"Lancer au demarrage"_s, u"launchAtLogin"_s, preferences.launchAtLogin(),
        [&preferences](bool isOn) { preferences.setLaunchAtLogin(isOn); }, section->card()));
    return section;
}

PrefsSection *PreferencesView::shortcutsSection()
{
    PreferencesStorage &preferences = m_services.preferences;
    auto *const section =
        new PrefsSection(u"keyboard"_s, systemcolor::gray, u"Raccourcis clavier"_s, m_column);
    section->add(hotkeyRow(
        u"Plein ecran"_s, u"fullScreenHotkey"_s, preferences.fullScreenHotkey(),
        [&preferences](KeyCombo recorded) { preferences.setFullScreenHotkey(recorded); },
        section->card()));
    section->add(new PrefsDivider(section->card()));
    section->add(hotkeyRow(
        u"Selection"_s, u"selectionHotkey"_s, preferences.selectionHotkey(),
        [&preferences](KeyCombo recorded) { preferences.setSelectionHotkey(recorded); },
        section->card()));
    return section;
}

PrefsSection *PreferencesView::captureSection()
{
    auto *const section =
        new PrefsSection(u"camera.viewfinder"_s, systemcolor::blue, u"Capture"_s, m_column);
    QWidget *const card = section->card();
    const QString autoConfirm = u"autoConfirmSelection"_s;
    section->add(switchRow(u"Validation auto"_s, autoConfirm, stored(autoConfirm),
                           storing(autoConfirm), card));
    auto *const help =
        new PrefsText(u"Capture directement apres la selection de zone, sans cliquer Valider."_s,
                      caption, TextStyle::Secondary, TextOverflow::Wrap, card);
    section->add(padded(help, 0, prefslook::helpBottom, card));
    section->add(new PrefsDivider(card));

    const QString showFrame = u"defaultShowFrame"_s;
    const auto onShowFrame = [this, storeIt = storing(showFrame)](bool isOn) {
        storeIt(isOn);
        showGroup(m_backgroundGroup, isOn);
    };
    section->add(switchRow(u"Cadre fenetre"_s, showFrame, stored(showFrame), onShowFrame, card));
    m_backgroundGroup = backgroundGroup(card);
    m_backgroundGroup->setVisible(stored(showFrame));
    section->add(m_backgroundGroup);
    return section;
}

PrefsSection *PreferencesView::outputSection()
{
    auto *const section =
        new PrefsSection(u"square.and.arrow.down"_s, systemcolor::green, u"Sortie"_s, m_column);
    QWidget *const card = section->card();
    const QString copies = u"copyToClipboard"_s;
    section->add(switchRow(u"Presse-papier"_s, copies, m_services.preferences.copyToClipboard(),
                           storing(copies), card));
    section->add(new PrefsDivider(card));

    const QString saves = u"saveToFile"_s;
    const auto onSaves = [this, storeIt = storing(saves)](bool isOn) {
        storeIt(isOn);
        showGroup(m_outputDetails, isOn);
    };
    section->add(switchRow(u"Fichier"_s, saves, stored(saves), onSaves, card));
    m_outputDetails = outputDetails(card);
    m_outputDetails->setVisible(stored(saves));
    section->add(m_outputDetails);
    return section;
}

QWidget *PreferencesView::footer()
{
    auto *const line = new QWidget(this);
    auto *const layout = new QHBoxLayout(line);
    layout->setContentsMargins(prefslook::footerSidePadding, prefslook::footerEdgePadding,
                               prefslook::footerSidePadding, prefslook::footerEdgePadding);
    layout->addStretch();
    layout->addWidget(
        new PrefsText(versionText(), caption, TextStyle::Tertiary, TextOverflow::Grow, line));
    layout->addStretch();
    return line;
}

QWidget *PreferencesView::hotkeyRow(const QString &label, const QString &name,
                                    const KeyCombo &keyCombo,
                                    const std::function<void(KeyCombo)> &store, QWidget *parent)
{
    auto *const recorder = new KeyRecorderView(label, keyCombo, m_silence, parent);
    recorder->setObjectName(name);
    connect(recorder, &KeyRecorderView::keyComboChanged, this, [this, store](KeyCombo recorded) {
        store(recorded);
        m_onHotkeysChanged();
    });
    return new PrefsRow(label, recorder, parent);
}

QWidget *PreferencesView::switchRow(const QString &label, const QString &name, bool isOn,
                                    const std::function<void(bool)> &onChanged, QWidget *parent)
{
    auto *const control = new SwitchControl(label, parent);
    control->setObjectName(name);
    control->setChecked(isOn);
    connect(control, &QAbstractButton::toggled, this, onChanged);
    return new PrefsRow(label, control, parent);
}

QWidget *PreferencesView::backgroundGroup(QWidget *parent)
{
    auto *const group = new QWidget(parent);
    auto *const lines = new QVBoxLayout(group);
    lines->setContentsMargins(0, prefslook::groupTop, 0, 0);
    lines->setSpacing(prefslook::themeSpacing);
    const QString title = u"Theme de fond"_s;
    lines->addWidget(
        new PrefsText(title, subheadline, TextStyle::Primary, TextOverflow::Grow, group));
    auto *const tiles = new BackgroundTiles(title, storedBackground(), group);
    tiles->setObjectName(u"defaultFrameBackground"_s);
    connect(tiles, &BackgroundTiles::styleChosen, this, [this](FrameBackgroundStyle style) {
        store(m_services.preferences, u"defaultFrameBackground"_s,
              QString(rowOf(frameBackgroundStyles, style).rawValue));
    });
    lines->addWidget(tiles);
    return group;
}

OutputDetails *PreferencesView::outputDetails(QWidget *parent)
{
    auto *const details =
        new OutputDetails(m_saveDirectory, m_services.preferences.imageFormat(), parent);
    connect(details, &OutputDetails::directoryWanted, this, &PreferencesView::chooseSaveDirectory);
    connect(details, &OutputDetails::formatChosen, this, [this](ImageFormat format) {
        store(m_services.preferences, u"imageFormat"_s, QString(rawValue(format)));
    });
    return details;
}

void PreferencesView::showGroup(QWidget *group, bool isShown)
{
    group->setVisible(isShown);
    if (isShown)
        m_column->reveal(group);
}

void PreferencesView::chooseSaveDirectory()
{
    const QPointer self{this};
    m_services.folderPanel.chooseFolder(*window(), m_saveDirectory, [self](const QString &path) {
        if (!self)
            return;
        self->m_saveDirectory = path;
        self->m_outputDetails->showDirectory(path);
        store(self->m_services.preferences, u"saveDirectory"_s, path);
    });
}

bool PreferencesView::stored(const QString &key) const
{
    return m_services.preferences.defaults().boolean(key);
}

FrameBackgroundStyle PreferencesView::storedBackground() const
{
    const auto raw = m_services.preferences.defaults().string(u"defaultFrameBackground"_s);
    return caseOf(frameBackgroundStyles, raw.value_or(QString()))
        .value_or(FrameBackgroundStyle::DominantColor);
}

std::function<void(bool)> PreferencesView::storing(const QString &key)
{
    return [this, key](bool isOn) { store(m_services.preferences, key, isOn); };
}

} // namespace lumacap
