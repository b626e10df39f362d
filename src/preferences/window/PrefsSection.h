#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

class QVBoxLayout;

namespace lumacap {

/// A headed card of the preferences.
class PrefsSection final : public QWidget {
    Q_OBJECT

public:
    /// `icon` is the name of a symbol.
    PrefsSection(const QString &icon, const QColor &iconColor, const QString &title,
                 QWidget *parent);

    /// What widgets of the card have as their parent.
    QWidget *card() const { return m_card; }
    /// Puts a child of the card below what is there.
    void add(QWidget *content);

private:
    QWidget *m_card;
    QVBoxLayout *m_content;
};

} // namespace lumacap
