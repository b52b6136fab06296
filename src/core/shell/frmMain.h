#pragma once

#include <QHash>
#include <QMainWindow>

class ChildArea;
class CommandSet;
class QLabel;
struct DatabaseChoice;

/// The parent window of the system: the menus and the tool bar, the child windows and the status bar.
class frmMain final : public QMainWindow
{
    Q_OBJECT

public:
    frmMain();

    /// What follows the first show: the title, the warnings, the two managers side by side, and Login.
    void Load();
    /// Sets the status bar and what each command may do, by the database and the user's rights.
    void Login();
    /// Ends the session, errors ignored: forms, credentials, connection, settings and log. The window goes.
    /// False where a child window stays open, and with it the session.
    bool Unload();
    void SwitchDatabase();

    /// Takes the place of the screen's width, in pixels, for the advice that it gives; 0 = the real one.
    static void AssumeScreenWidth(int pixels);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void BuildStatusBar();
    void RestoreWindow();
    void StoreWindow() const;
    void SetTitle();
    void OpenManagers();
    void ShowWhatToDo();
    void ApplyRights();
    void Choose(const QString &id);
    /// What the window carries out by itself, by command.
    using Action = void (*)(frmMain &);
    static const QHash<QString, Action> &OwnActions();
    void OpenChild(const QString &command);
    void ShowProperties();
    void RefreshForms();
    bool CloseChildren();
    void LeaveField();
    bool ReconnectUntilSettled(const DatabaseChoice &last);
    void StartAnew(const QString &text, const QString &title, bool exclamation);

    ChildArea *m_children;
    CommandSet *m_commands;
    QLabel *m_panels[3];
    bool m_loginComplete = false;
    bool m_unloaded = false;
};
