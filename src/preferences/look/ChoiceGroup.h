#pragma once

#include "preferences/look/PrefsControl.h"

#include <QWidget>

#include <vector>

namespace lumacap {

/// One of several that exclude each other; marked as its group says.
class ChoiceControl : public PrefsControl {
    Q_OBJECT

public:
    ChoiceControl(const QString &name, QWidget *parent);

protected:
    void nextCheckState() override { }
};

/// A group of choices of which one is current. Tab reaches that one, arrows go on from it.
class ChoiceGroup : public QWidget {
    Q_OBJECT

public:
    /// So many choices stand beside each other.
    ChoiceGroup(const QString &name, int columns, QWidget *parent);

    /// Of the choices in their order; -1 before one was.
    int current() const { return m_current; }
    /// Marks another one, without a signal.
    void setCurrent(int index);

    const std::vector<ChoiceControl *> &choices() const { return m_choices; }

Q_SIGNALS:
    /// The user made another one current.
    void chosen(int index);

protected:
    /// Takes a child of this group in as its last choice.
    void add(ChoiceControl *choice);

    void keyPressEvent(QKeyEvent *event) override;

private:
    void choose(int index);

    int m_columns;
    int m_current = -1;
    std::vector<ChoiceControl *> m_choices;
};

} // namespace lumacap
