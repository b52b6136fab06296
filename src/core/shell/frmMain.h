#pragma once

#include <QHash>
#include <QMainWindow>
#include <QTimer>

#include <functional>

class ChildArea;
class CommandSet;
class QLabel;
class QMenu;
class StartPage;
struct DatabaseChoice;
struct Screen;

/// The parent window of the system: the menus and the tool bar, the child windows and the status bar.
class frmMain final : public QMainWindow
{
    Q_OBJECT

public:
    frmMain();

    /// Called after the first show: sets the title, shows the warnings, opens the two managers side by side,
    /// and calls Login.
    void Load();
    /// Sets the status bar, and enables the commands that the database and the user's rights allow.
    void Login();
    /// Ends the session: forms, credentials, connection, settings and log, ignoring errors. The window
    /// closes. False if a child window stays open, and the session with it.
    bool Unload();
    void SwitchDatabase();

    /// Overrides the screen's width, in pixels, for the advice about it; 0 = the real width.
    static void AssumeScreenWidth(int pixels);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void BuildStatusBar();
    void BuildRecent();
    void OfferRecent();
    void OpenRecent(const QString &file);
    /// `choose` sets what the session is to open; false if the user wants none.
    void SwitchDatabase(const std::function<bool()> &choose);
    void ShowSaved();
    void RestoreWindow();
    void StoreWindow() const;
    void SetTitle();
    int ScreenWidth() const;
    void WarnOfNarrowScreen() const;
    void OpenManagers();
    void ShowWhatToDo();
    void ApplyRights();
    void Choose(const QString &id);
    /// What the window carries out itself, by command.
    using Action = void (*)(frmMain &);
    static const QHash<QString, Action> &OwnActions();
    void RunModal(const Screen &screen);
    void OpenChild(const QString &command);
    void ShowProperties();
    /// Runs the hook of each open child window that has it, from the one opened last.
    void ForEachChild(std::function<void(QWidget *)> Screen::*refill);
    bool CloseRecords();
    bool CloseChildren();
    void LeaveField();
    bool ReconnectUntilSettled(const DatabaseChoice &last);
    void StartAnew(const QString &text, const QString &title, bool exclamation);

    ChildArea *m_children;
    StartPage *m_start;
    QMenu *m_recent = nullptr;
    CommandSet *m_commands;
    QLabel *m_panels[3];
    QLabel *m_user;
    QTimer m_saved{this}; ///< until the word of a save goes
    QString m_missing;    ///< the database file that was gone at the start
    bool m_loginComplete = false;
    bool m_unloaded = false;
};
