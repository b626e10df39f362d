#include "platform/kwin/hotkeys/Keyboard.h"

#include "platform/Spawn.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

namespace {

constexpr int layoutLimit = 1'000; // milliseconds

const auto layoutsService = u"org.kde.keyboard"_s;
const auto layoutsPath = u"/Layouts"_s;
const auto layoutsInterface = u"org.kde.KeyboardLayouts"_s;

} // namespace

Keyboard::Keyboard(wayland::Connection &connection, QDBusConnection bus)
    : m_bus(std::move(bus))
    , m_layouts(layoutsService, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
    , m_seat(connection)
{
    connect(&m_seat, &wayland::SeatKeyboard::keymapChanged, this, &Keyboard::readKeymap);
    // It is there only while there are several layouts. With no service named: the toolkit would
    // stop to ask the bus who owns it, and a word from anybody else brings about no more than a
    // question.
    connect(&m_layouts, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &Keyboard::onLayoutChanged);
    m_bus.connect({}, layoutsPath, layoutsInterface, u"layoutChanged"_s, this,
                  SLOT(onLayoutChanged()));
    onLayoutChanged();
}

Keyboard::~Keyboard() = default;

KeySequences Keyboard::sequences(std::uint32_t evdevCode, std::uint32_t carbonModifiers) const
{
    return m_keymap ? m_keymap->sequences(evdevCode, carbonModifiers, m_layout) : KeySequences();
}

void Keyboard::readKeymap()
{
    auto keymap = Keymap::fromText(m_seat.keymap());
    if (!keymap)
        return;
    m_keymap = std::move(keymap);
    if (m_isKnown)
        Q_EMIT changed();
}

void Keyboard::onLayoutChanged()
{
    spawn(learnLayout());
}

QCoro::Task<> Keyboard::learnLayout()
{
    const QPointer self{this};
    auto question = QDBusMessage::createMethodCall(layoutsService, layoutsPath, layoutsInterface,
                                                   u"getLayout"_s);
    question.setAutoStartService(false);
    const QDBusMessage answer = co_await m_bus.asyncCall(question, layoutLimit);
    if (!self)
        co_return;
    m_layout = answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toUInt()
                                                           : 0; // the only one
    if (!m_keymap)
        m_keymap = Keymap::systemDefault(); // until the first keyboard is plugged in
    m_isKnown = true;
    Q_EMIT changed();
}

} // namespace lumacap::kwin
