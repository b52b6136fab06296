#pragma once

#include <QWidget>

class QVBoxLayout;

/// What the main window shows while no database is open: the ways to get one, as buttons.
class StartPage final : public QWidget
{
    Q_OBJECT

public:
    explicit StartPage(QWidget *parent = nullptr);

    /// Offers these database files to be opened again, instead of those before.
    void Offer(const QStringList &files);

signals:
    void NewAsked();
    void OpenAsked();
    void FileAsked(const QString &file);

private:
    QVBoxLayout *m_column;
    QVBoxLayout *m_recent;
};
