#include "annotation/toolbar/BackgroundStyleMenu.h"

#include "annotation/toolbar/BackgroundStyleRow.h"
#include "annotation/toolbar/MenuPanel.h"
#include "annotation/toolbar/ToolbarLook.h"
#include "controls/Accessibility.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumacap {

BackgroundStyleMenu::BackgroundStyleMenu(FrameBackgroundStyle current, double unitsAPoint,
                                         QWidget *parent)
    : QWidget(parent)
    , m_unitsAPoint(unitsAPoint)
    , m_panel(new QWidget(this))
{
    describeAs(*this, QAccessible::PopupMenu);
    setObjectName(u"frameBackground.menu"_s);
    setAccessibleName(u"frameBackground"_s);
    setAttribute(Qt::WA_NoMousePropagation);
    m_panel->setAttribute(Qt::WA_NoMousePropagation);
    setCursor(Qt::ArrowCursor);
    parent->installEventFilter(this);
    addRows(current);
}

void BackgroundStyleMenu::open(const QRectF &anchor, MenuOpener opener)
{
    setGeometry(parentWidget()->rect());
    placePanel(anchor);
    m_focusBefore = window()->focusWidget();
    raise();
    show();
    takeFocus(opener);
}

void BackgroundStyleMenu::addRows(FrameBackgroundStyle current)
{
    double width = 0;
    for (const auto &style : frameBackgroundStyles) {
        auto *const row = new BackgroundStyleRow(style.value, m_panel);
        connect(row, &BackgroundStyleRow::clicked, this,
                [this, value = style.value] { choose(value); });
        m_rows.push_back(row);
        width = std::max(width, row->frameSize().width);
    }
    QPointF origin(toolbarlook::menuPadding, toolbarlook::menuPadding);
    for (BackgroundStyleRow *const row : m_rows) {
        row->setWidth(width);
        row->place(origin, m_unitsAPoint);
        origin.ry() += toolbarlook::rowHeight;
    }
    const QSizeF size(width + 2 * toolbarlook::menuPadding, origin.y() + toolbarlook::menuPadding);
    m_panel->resize((size * m_unitsAPoint).toSize());
    showStyle(current);
}

void BackgroundStyleMenu::placePanel(const QRectF &anchor)
{
    const double gap = toolbarlook::menuGap * m_unitsAPoint;
    const double margin = toolbarlook::menuMargin * m_unitsAPoint;
    const QSizeF size = m_panel->size();
    double top = anchor.bottom() + gap;
    if (top + size.height() > height() - margin && anchor.top() - gap - size.height() >= margin)
        top = anchor.top() - gap - size.height();
    // The upper left corner wins where the parent is too small for all of it.
    const double left = std::max(std::min(anchor.left(), width() - margin - size.width()), margin);
    top = std::max(std::min(top, height() - margin - size.height()), margin);
    m_panel->move(QPointF(left, top).toPoint());
}

void BackgroundStyleMenu::takeFocus(MenuOpener opener)
{
    const auto current = std::ranges::find_if(
        m_rows, [](const BackgroundStyleRow *row) { return row->isChecked(); });
    QWidget *const first = opener == MenuOpener::Keyboard ? *current : m_panel;
    first->setFocus(Qt::PopupFocusReason);
}

void BackgroundStyleMenu::showStyle(FrameBackgroundStyle style)
{
    for (BackgroundStyleRow *const row : m_rows)
        row->setChecked(row->backgroundStyle() == style);
}

void BackgroundStyleMenu::choose(FrameBackgroundStyle style)
{
    Q_EMIT chosen(style);
    end();
}

void BackgroundStyleMenu::end()
{
    if (m_hasEnded)
        return;
    m_hasEnded = true;
    if (m_focusBefore)
        m_focusBefore->setFocus(Qt::PopupFocusReason);
    hide();
    deleteLater();
    Q_EMIT ended();
}

void BackgroundStyleMenu::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    paintMenuPanel(painter, m_panel->geometry(), m_unitsAPoint, themeOf(palette()));
}

/// The moves and the release that follow reach nothing else: the toolkit drops what belongs to a
/// press whose widget has gone.
void BackgroundStyleMenu::mousePressEvent(QMouseEvent * /*event*/)
{
    end();
}

int BackgroundStyleMenu::focusedRow() const
{
    const auto row = std::ranges::find(m_rows, window()->focusWidget());
    return row == m_rows.end() ? -1 : static_cast<int>(row - m_rows.begin());
}

void BackgroundStyleMenu::focusRow(int index)
{
    const auto last = static_cast<int>(m_rows.size()) - 1;
    const int inside = index < 0 ? last : index > last ? 0 : index;
    m_rows[static_cast<std::size_t>(inside)]->setFocus(Qt::PopupFocusReason);
}

void BackgroundStyleMenu::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        focusRow(std::max(focusedRow(), 0) - 1);
        break;
    case Qt::Key_Down:
        focusRow(focusedRow() + 1);
        break;
    case Qt::Key_Home:
        focusRow(0);
        break;
    case Qt::Key_End:
        focusRow(-1);
        break;
    case Qt::Key_Escape:
        end();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->ignore(); // they confirm the capture
        break;
    default: // and nothing else works while a menu is open
        break;
    }
}

bool BackgroundStyleMenu::focusNextPrevChild(bool /*next*/)
{
    end();
    return true;
}

bool BackgroundStyleMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        end(); // it would cover too little, and its button lies elsewhere
    return QWidget::eventFilter(watched, event);
}

} // namespace lumacap
