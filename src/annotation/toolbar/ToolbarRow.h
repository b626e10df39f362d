#pragma once

#include "annotation/toolbar/WrappingRow.h"

#include <QRectF>
#include <QString>

#include <functional>
#include <vector>

class QWidget;

namespace lumacap {

class AnnotationStore;
class BackgroundMenuButton;
class ToolbarButton;
class UndoButton;

/// The controls of the strip from left to right, and what each of them shows and does.
class ToolbarRow {
public:
    /// Makes the controls children of `strip`. Borrows it and the store, which outlive the row.
    ToolbarRow(AnnotationStore &store, QWidget &strip);

    BackgroundMenuButton &menuButton() const { return *m_menuButton; }

    /// Makes the controls look as the store says. True when some came or went.
    bool showState();

    /// The controls and dividers that are there now.
    std::vector<RowItem> items() const;

    /// Puts the controls where `placement`, which is of `items()`, says, from `origin` on. In
    /// points, of which each is `unitsAPoint` units of the strip. Answers where the dividers are.
    std::vector<QRectF> place(const RowPlacement &placement, QPointF origin, double unitsAPoint);

private:
    enum class Presence { Always, WithMagnifier, WithFrame };

    /// A control of the row; a divider where it has no button.
    struct Entry {
        Presence presence;
        ToolbarButton *button;
        std::function<bool()> isCurrent;
    };

    void addTools();
    void addStyles();
    void addMagnifierChoices();
    void addFrame();
    void addEnds();
    void addDivider(Presence presence);
    void add(Presence presence, ToolbarButton *button, const QString &objectName,
             std::function<void()> action, std::function<bool()> isCurrent = {});
    template <class Value>
    void addChoice(Presence presence, ToolbarButton *button, const QString &objectName, Value value,
                   Value (AnnotationStore::*current)() const, void (AnnotationStore::*set)(Value));
    bool isPresent(Presence presence) const;

    AnnotationStore &m_store;
    QWidget *m_strip;
    std::vector<Entry> m_entries;
    UndoButton *m_undo = nullptr;
    BackgroundMenuButton *m_menuButton = nullptr;
    bool m_hasMagnifierChoices = false;
    bool m_hasFrameMenu = false;
};

} // namespace lumacap
