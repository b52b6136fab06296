#pragma once

#include <QObject>
#include <QTimer>

class QLabel;
class QStatusBar;

/// What the status bar of the main window shows: the hint of the command under the pointer or the word of a
/// save, the user, the time of the logon, and the database.
class StatusPanels final : public QObject
{
    Q_OBJECT

public:
    /// Adds the panels to the status bar.
    explicit StatusPanels(QStatusBar *bar);

    /// Shows the hint of a command; "" takes it away, but not the word of a save.
    void ShowHint(const QString &hint);
    /// Shows the user, the time, and that there is no database.
    void ShowLogon();
    /// Shows the name of the database, or what is wrong with it.
    void ShowDatabase(const QString &text);
    /// The database as shown, without the space around it.
    QString Database() const;

private:
    static QLabel *MakePanel(QStatusBar *bar, const QString &name);
    void ShowSaved();

    QLabel *m_hint;
    QLabel *m_user;
    QLabel *m_time;
    QLabel *m_database;
    QTimer m_saved{this}; ///< until the word of a save goes
};
