#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QMimeData;

/// Lets a CSV file be dropped on a window.
class CsvDrop final : public QObject
{
    Q_OBJECT

public:
    /// `mayDrop` tells whether a file is welcome now; `dropped` gets its name after the drop is over.
    CsvDrop(QWidget *window, std::function<bool()> mayDrop, std::function<void(const QString &)> dropped);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::function<bool()> m_mayDrop;
    std::function<void(const QString &)> m_dropped;
};
