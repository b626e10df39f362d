#include "preferences/storage/KeyCombo.h"

#include "preferences/storage/EventFlags.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

struct ModifierRow {
    std::uint32_t carbonBit;
    std::uint64_t eventFlag;
    char16_t glyph;
};

/// In the order in which a shortcut shows them.
constexpr std::array modifierRows{
    ModifierRow{carbon::controlKey, eventflag::control, u'\u2303'},
    ModifierRow{carbon::optionKey, eventflag::option, u'\u2325'},
    ModifierRow{carbon::shiftKey, eventflag::shift, u'\u21E7'},
    ModifierRow{carbon::cmdKey, eventflag::command, u'\u2318'},
};

struct KeyLabel {
    std::uint32_t keyCode;
    QLatin1StringView label;
};

/// Display text only: it never decides which key is registered. The labels of 24, 25, 28 to 35, 37
/// and 39 are the designed ones even where an ANSI keyboard's key bears another.
constexpr std::array keyLabels{
    KeyLabel{0, "A"_L1},     KeyLabel{1, "S"_L1},      KeyLabel{2, "D"_L1},
    KeyLabel{3, "F"_L1},     KeyLabel{4, "H"_L1},      KeyLabel{5, "G"_L1},
    KeyLabel{6, "Z"_L1},     KeyLabel{7, "X"_L1},      KeyLabel{8, "C"_L1},
    KeyLabel{9, "V"_L1},     KeyLabel{11, "B"_L1},     KeyLabel{12, "Q"_L1},
    KeyLabel{13, "W"_L1},    KeyLabel{14, "E"_L1},     KeyLabel{15, "R"_L1},
    KeyLabel{16, "Y"_L1},    KeyLabel{17, "T"_L1},     KeyLabel{18, "1"_L1},
    KeyLabel{19, "2"_L1},    KeyLabel{20, "3"_L1},     KeyLabel{21, "4"_L1},
    KeyLabel{22, "6"_L1},    KeyLabel{23, "5"_L1},     KeyLabel{24, "9"_L1},
    KeyLabel{25, "7"_L1},    KeyLabel{26, "-"_L1},     KeyLabel{27, "8"_L1},
    KeyLabel{28, "0"_L1},    KeyLabel{29, "]"_L1},     KeyLabel{30, "O"_L1},
    KeyLabel{31, "U"_L1},    KeyLabel{32, "["_L1},     KeyLabel{33, "I"_L1},
    KeyLabel{34, "P"_L1},    KeyLabel{35, "L"_L1},     KeyLabel{36, "Return"_L1},
    KeyLabel{37, "J"_L1},    KeyLabel{39, "K"_L1},     KeyLabel{44, "/"_L1},
    KeyLabel{45, "N"_L1},    KeyLabel{46, "M"_L1},     KeyLabel{47, "."_L1},
    KeyLabel{48, "Tab"_L1},  KeyLabel{49, "Space"_L1}, KeyLabel{51, "Delete"_L1},
    KeyLabel{53, "Esc"_L1},  KeyLabel{122, "F1"_L1},   KeyLabel{120, "F2"_L1},
    KeyLabel{99, "F3"_L1},   KeyLabel{118, "F4"_L1},   KeyLabel{96, "F5"_L1},
    KeyLabel{97, "F6"_L1},   KeyLabel{98, "F7"_L1},    KeyLabel{100, "F8"_L1},
    KeyLabel{101, "F9"_L1},  KeyLabel{109, "F10"_L1},  KeyLabel{103, "F11"_L1},
    KeyLabel{111, "F12"_L1},
};
static_assert(keyLabels.size() == 58);

std::optional<std::uint32_t> unsignedMember(const QJsonObject &object, QLatin1StringView name)
{
    const QJsonValue value = object.value(name);
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (number < 0 || number > std::numeric_limits<std::uint32_t>::max()
        || number != std::floor(number))
        return std::nullopt;
    return static_cast<std::uint32_t>(number);
}

} // namespace

QString KeyCombo::displayString() const
{
    QString text;
    for (const ModifierRow &row : modifierRows) {
        if ((modifiers & row.carbonBit) != 0)
            text += QChar(row.glyph);
    }
    return text + keyCodeToString(keyCode);
}

QString KeyCombo::keyCodeToString(std::uint32_t keyCode)
{
    const auto *const row = std::ranges::find(keyLabels, keyCode, &KeyLabel::keyCode);
    return row == keyLabels.end() ? u"Key%1"_s.arg(keyCode) : QString(row->label);
}

std::uint32_t KeyCombo::carbonModifiers(std::uint64_t flags)
{
    std::uint32_t mask = 0;
    for (const ModifierRow &row : modifierRows) {
        if ((flags & row.eventFlag) != 0)
            mask |= row.carbonBit;
    }
    return mask;
}

QByteArray KeyCombo::toJson() const
{
    const QJsonObject object{{u"keyCode"_s, static_cast<qint64>(keyCode)},
                             {u"modifiers"_s, static_cast<qint64>(modifiers)}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<KeyCombo> KeyCombo::fromJson(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const auto keyCode = unsignedMember(object, "keyCode"_L1);
    const auto modifiers = unsignedMember(object, "modifiers"_L1);
    if (!keyCode || !modifiers)
        return std::nullopt;
    return KeyCombo{*keyCode, *modifiers};
}

} // namespace lumacap
