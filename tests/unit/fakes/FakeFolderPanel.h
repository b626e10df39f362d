#pragma once

#include "platform/FolderPanel.h"

#include <QStringList>

#include <utility>

namespace lumacap {

/// A dialog that the test answers.
class FakeFolderPanel final : public FolderPanel {
public:
    void chooseFolder(QWidget &window, const QString &startFolder, Chosen onChosen) override
    {
        lastWindow = &window;
        starts.append(startFolder);
        m_onChosen = std::move(onChosen);
    }
    void choose(const QString &path) { std::exchange(m_onChosen, {})(path); }
    void cancel() { m_onChosen = {}; }

    QWidget *lastWindow = nullptr;
    QStringList starts;

private:
    Chosen m_onChosen;
};

} // namespace lumacap
