#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

/// The first window of a session: a picture with the version and, where the database has users, the fields
/// to log on. Without a logon a timer ends it, or a key or a click before that.
class frmSplash final : public QWidget
{
    Q_OBJECT

public:
    frmSplash();

    /// Shows the logon fields, in place of the timer that ends the splash.
    void AskForLogon();

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void BuildLogon();
    void Finish();
    /// Ends a splash that only waits for its timer.
    void CutShort();
    void LogOn();
    void Cancel();
    void SetTopmost(bool topmost);
    QRectF PictureRect() const;

    QTimer m_timer;
    QLabel *m_name;
    QLabel *m_version;
    QWidget *m_logon;
    QLabel *m_userLabel;
    QLineEdit *m_user;
    QLabel *m_passwordLabel;
    QLineEdit *m_password;
    QPushButton *m_ok;
    QPushButton *m_cancel;
};
