#include "platform/freedesktop/tray/MenuEntryText.h"

#include <QAction>
#include <QKeySequence>

#include <algorithm>
#include <array>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

namespace {

struct ModifierName {
    Qt::KeyboardModifier modifier;
    QLatin1StringView name;
};

constexpr std::array modifierNames{
    ModifierName{.modifier = Qt::ControlModifier, .name = "Control"_L1},
    ModifierName{.modifier = Qt::AltModifier, .name = "Alt"_L1},
    ModifierName{.modifier = Qt::ShiftModifier, .name = "Shift"_L1},
    ModifierName{.modifier = Qt::MetaModifier, .name = "Super"_L1}};

struct KeyName {
    Qt::Key key;
    QLatin1StringView name;
};

// Hosts made with GTK look the key up among the X key names, where letters, digits and function
// keys are called what Qt calls them and punctuation is not. (Hosts made with Qt know both for +
// and - only; they leave the shortcut of any other punctuation out.)
constexpr std::array keyNames{KeyName{.key = Qt::Key_Space, .name = "space"_L1},
                              KeyName{.key = Qt::Key_Exclam, .name = "exclam"_L1},
                              KeyName{.key = Qt::Key_QuoteDbl, .name = "quotedbl"_L1},
                              KeyName{.key = Qt::Key_NumberSign, .name = "numbersign"_L1},
                              KeyName{.key = Qt::Key_Dollar, .name = "dollar"_L1},
                              KeyName{.key = Qt::Key_Percent, .name = "percent"_L1},
                              KeyName{.key = Qt::Key_Ampersand, .name = "ampersand"_L1},
                              KeyName{.key = Qt::Key_Apostrophe, .name = "apostrophe"_L1},
                              KeyName{.key = Qt::Key_ParenLeft, .name = "parenleft"_L1},
                              KeyName{.key = Qt::Key_ParenRight, .name = "parenright"_L1},
                              KeyName{.key = Qt::Key_Asterisk, .name = "asterisk"_L1},
                              KeyName{.key = Qt::Key_Plus, .name = "plus"_L1},
                              KeyName{.key = Qt::Key_Comma, .name = "comma"_L1},
                              KeyName{.key = Qt::Key_Minus, .name = "minus"_L1},
                              KeyName{.key = Qt::Key_Period, .name = "period"_L1},
                              KeyName{.key = Qt::Key_Slash, .name = "slash"_L1},
                              KeyName{.key = Qt::Key_Colon, .name = "colon"_L1},
                              KeyName{.key = Qt::Key_Semicolon, .name = "semicolon"_L1},
                              KeyName{.key = Qt::Key_Less, .name = "less"_L1},
                              KeyName{.key = Qt::Key_Equal, .name = "equal"_L1},
                              KeyName{.key = Qt::Key_Greater, .name = "greater"_L1},
                              KeyName{.key = Qt::Key_Question, .name = "question"_L1},
                              KeyName{.key = Qt::Key_At, .name = "at"_L1},
                              KeyName{.key = Qt::Key_BracketLeft, .name = "bracketleft"_L1},
                              KeyName{.key = Qt::Key_Backslash, .name = "backslash"_L1},
                              KeyName{.key = Qt::Key_BracketRight, .name = "bracketright"_L1},
                              KeyName{.key = Qt::Key_AsciiCircum, .name = "asciicircum"_L1},
                              KeyName{.key = Qt::Key_Underscore, .name = "underscore"_L1},
                              KeyName{.key = Qt::Key_QuoteLeft, .name = "grave"_L1},
                              KeyName{.key = Qt::Key_BraceLeft, .name = "braceleft"_L1},
                              KeyName{.key = Qt::Key_Bar, .name = "bar"_L1},
                              KeyName{.key = Qt::Key_BraceRight, .name = "braceright"_L1},
                              KeyName{.key = Qt::Key_AsciiTilde, .name = "asciitilde"_L1}};

QString keyName(Qt::Key key)
{
    const auto *const named = std::ranges::find(keyNames, key, &KeyName::key);
    if (named != keyNames.end())
        return named->name;
    return QKeySequence(key).toString(QKeySequence::PortableText);
}

} // namespace

QString menuLabel(const QString &actionText)
{
    QString label;
    for (qsizetype i = 0; i < actionText.size(); ++i) {
        if (actionText[i] == u'_') {
            label += "__"_L1;
        } else if (actionText[i] != u'&') {
            label += actionText[i];
        } else if (i + 1 < actionText.size()) {
            if (actionText[i + 1] == u'&')
                label += actionText[++i];
            else
                label += u'_';
        }
    }
    return label;
}

MenuShortcut menuShortcut(const QKeySequence &sequence)
{
    MenuShortcut shortcut;
    for (int i = 0; i < sequence.count(); ++i) {
        const QKeyCombination press = sequence[static_cast<uint>(i)];
        QStringList names;
        for (const ModifierName &row : modifierNames) {
            if (press.keyboardModifiers().testFlag(row.modifier))
                names.append(row.name);
        }
        names.append(keyName(press.key()));
        shortcut.append(names);
    }
    return shortcut;
}

QVariantMap menuProperties(const QAction &action)
{
    QVariantMap properties{{u"visible"_s, action.isVisible()}};
    if (action.isSeparator()) {
        properties.insert(u"type"_s, u"separator"_s);
        return properties;
    }
    properties.insert(u"type"_s, u"standard"_s);
    properties.insert(u"label"_s, menuLabel(action.text()));
    properties.insert(u"enabled"_s, action.isEnabled());
    if (const MenuShortcut shortcut = menuShortcut(action.shortcut()); !shortcut.isEmpty())
        properties.insert(u"shortcut"_s, QVariant::fromValue(shortcut));
    return properties;
}

} // namespace lumacap::freedesktop
