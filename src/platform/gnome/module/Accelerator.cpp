#include "platform/gnome/module/Accelerator.h"

#include "platform/CarbonModifiers.h"
#include "platform/VirtualKeys.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lumacap::gnome {

namespace {

struct ModifierRow {
    QLatin1StringView name; ///< in any case
    std::uint32_t modifier;
};

/// The first name of each is the one that is written.
constexpr std::array modifierRows{
    ModifierRow{"Control"_L1, carbon::controlKey}, ModifierRow{"Shift"_L1, carbon::shiftKey},
    ModifierRow{"Alt"_L1, carbon::optionKey},      ModifierRow{"Super"_L1, carbon::cmdKey},
    ModifierRow{"Primary"_L1, carbon::controlKey}, ModifierRow{"Ctrl"_L1, carbon::controlKey},
    ModifierRow{"Ctl"_L1, carbon::controlKey},     ModifierRow{"Shft"_L1, carbon::shiftKey},
    ModifierRow{"Mod1"_L1, carbon::optionKey},     ModifierRow{"Mod4"_L1, carbon::cmdKey},
};

} // namespace

std::optional<Accelerator> parseAccelerator(QStringView text)
{
    Accelerator accelerator;
    while (text.startsWith(u'<')) {
        const qsizetype end = text.indexOf(u'>');
        if (end < 0)
            return std::nullopt;
        const QStringView name = text.sliced(1, end - 1);
        const auto *const row =
            std::ranges::find_if(modifierRows, [name](const ModifierRow &entry) {
                return name.compare(entry.name, Qt::CaseInsensitive) == 0;
            });
        if (row == modifierRows.end())
            return std::nullopt;
        accelerator.modifiers |= row->modifier;
        text = text.sliced(end + 1);
    }
    if (text.isEmpty() || text == "disabled"_L1)
        return std::nullopt;
    accelerator.key = text.toString();
    return accelerator;
}

QString acceleratorText(const KeyChord &chord)
{
    QString text;
    std::uint32_t written = 0;
    for (const ModifierRow &row : modifierRows) {
        if ((chord.modifiers & ~written & row.modifier) != 0)
            text += u'<' + row.name + u'>';
        written |= row.modifier;
    }
    return text + u"0x%1"_s.arg(chord.key + scanCodeOffset, 2, 16, QChar(u'0'));
}

std::optional<std::uint32_t> physicalKey(const Accelerator &accelerator)
{
    bool isNumber = false;
    const auto code = accelerator.key.startsWith(u"0x"_s)
        ? QStringView(accelerator.key).sliced(2).toUInt(&isNumber, 16)
        : 0;
    return isNumber && code >= scanCodeOffset ? std::optional(code - scanCodeOffset) : std::nullopt;
}

} // namespace lumacap::gnome
