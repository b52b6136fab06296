#pragma once

#include "core/shell/ChildScreens.h"

#include <QHash>
#include <QMainWindow>

class ChildArea;
class CommandSet;
class QMenu;
class StartPage;
class StatusPanels;

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
    void BuildRecent();
    void OfferRecent();
    void OpenRecent(const QString &file);
    void ShowOtherDatabase();
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

    ChildArea *m_children;
    ChildScreens m_screens;
    StartPage *m_start;
    QMenu *m_recent = nullptr;
    CommandSet *m_commands;
    StatusPanels *m_status;
    QString m_missing; ///< the database file that was gone at the start
    bool m_loginComplete = false;
    bool m_unloaded = false;
};
