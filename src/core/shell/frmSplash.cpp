#include "core/shell/frmSplash.h"

#include "core/session/Session.h"
#include "core/shell/Main.h"
#include "core/shell/Version.h"
#include "forms/frames/ButtonKeys.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "users/UsersModule.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSvgRenderer>
#include <QVBoxLayout>
#include <QWindow>

#include <cmath>

namespace
{
constexpr int splashTime = 2500;
constexpr double pictureRatio = 220.0 / 520.0;

QLabel *NewLabel(const QString &name, const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

/// Makes a label white for the picture, in a size relative to the desktop's font.
void StandOnPicture(QLabel *label, double size, QFont::Weight weight)
{
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setWeight(weight);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Qt::white);
    label->setPalette(palette);
}
} // namespace

frmSplash::frmSplash()
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_timer(this)
    , m_name(NewLabel(QStringLiteral("ProductName"), QStringLiteral("Veltrane"), this))
    , m_version(NewLabel(QStringLiteral("Label1"), VersionLine(QStringLiteral("Version")), this))
{
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("Veltrane"));
    setAttribute(Qt::WA_DeleteOnClose);
    StandOnPicture(m_name, 3.2, QFont::Light);
    StandOnPicture(m_version, 1.05, QFont::Normal);
    BuildLogon();
    ButtonKeys::Serve();

    const int em = fontMetrics().height();
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(0);
    page->addSpacing(em * 4);
    for (QLabel *label : {m_name, m_version}) {
        label->setContentsMargins(em * 2, 0, em * 2, 0);
        page->addWidget(label);
    }
    page->addSpacing(qRound(em * 30 * pictureRatio) - em * 4 - m_name->sizeHint().height() -
                     m_version->sizeHint().height());
    page->addWidget(m_logon);
    setFixedWidth(em * 30);

    m_timer.setObjectName(QStringLiteral("Timer1"));
    m_timer.setSingleShot(true);
    m_timer.setInterval(splashTime);
    connect(&m_timer, &QTimer::timeout, this, &frmSplash::Finish);
}

void frmSplash::BuildLogon()
{
    m_logon = new QWidget(this);
    m_userLabel = NewLabel(QStringLiteral("Label7"), QStringLiteral("&User Name:"), m_logon);
    m_passwordLabel = NewLabel(QStringLiteral("Label6"), QStringLiteral("&Password:"), m_logon);
    m_user = new QLineEdit(m_logon);
    m_user->setObjectName(QStringLiteral("txtUserName"));
    m_password = new QLineEdit(m_logon);
    m_password->setObjectName(QStringLiteral("txtPassword"));
    m_password->setEchoMode(QLineEdit::Password);
    m_userLabel->setBuddy(m_user);
    m_passwordLabel->setBuddy(m_password);
    m_ok = new QPushButton(QStringLiteral("&OK"), m_logon);
    m_ok->setObjectName(QStringLiteral("OkBtn"));
    m_ok->setDefault(true);
    m_cancel = new QPushButton(QStringLiteral("&Cancel"), m_logon);
    m_cancel->setObjectName(QStringLiteral("CancelBtn"));

    const int em = fontMetrics().height();
    auto *fields = new QGridLayout(m_logon);
    fields->setContentsMargins(em * 2, em, em * 2, em);
    fields->addWidget(m_userLabel, 0, 0);
    fields->addWidget(m_user, 0, 1);
    fields->addWidget(m_ok, 0, 2);
    fields->addWidget(m_passwordLabel, 1, 0);
    fields->addWidget(m_password, 1, 1);
    fields->addWidget(m_cancel, 1, 2);
    fields->setColumnStretch(1, 1);
    setTabOrder(m_user, m_password);
    setTabOrder(m_password, m_ok);
    setTabOrder(m_ok, m_cancel);
    m_logon->hide();
    connect(m_ok, &QPushButton::clicked, this, &frmSplash::LogOn);
    connect(m_cancel, &QPushButton::clicked, this, &frmSplash::Cancel);
}

void frmSplash::AskForLogon()
{
    m_logon->show();
    adjustSize();
}

QRectF frmSplash::PictureRect() const
{
    return {0, 0, static_cast<double>(width()), std::ceil(width() * pictureRatio) + 1};
}

void frmSplash::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QSvgRenderer picture(QStringLiteral(":/icons/splash.svg"));
    picture.render(&painter, PictureRect());
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void frmSplash::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
    if (m_logon->isHidden())
        m_timer.start();
    else
        m_user->setFocus();
    SetTopmost(true);
}

void frmSplash::keyPressEvent(QKeyEvent *event)
{
    const bool asks = !m_logon->isHidden();
    if (asks && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        m_ok->click();
    else if (asks && event->key() == Qt::Key_Escape)
        m_cancel->click();
    else if (!asks)
        CutShort();
    else
        QWidget::keyPressEvent(event);
}

void frmSplash::mousePressEvent(QMouseEvent *)
{
    CutShort();
}

void frmSplash::CutShort()
{
    if (m_timer.isActive())
        Finish();
}

void frmSplash::closeEvent(QCloseEvent *event)
{
    // Closing through the window manager is a cancel, whatever the splash shows.
    if (event->spontaneous())
        Cancel();
    QWidget::closeEvent(event);
}

void frmSplash::SetTopmost(bool topmost)
{
    // Set on the native window: changing the widget's own flag would hide the window for a moment.
    if (windowHandle())
        windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
}

void frmSplash::Finish()
{
    m_timer.stop();
    close();
    ShowMainWindow();
}

void frmSplash::LogOn()
{
    const QString name = m_user->text();
    const QString password = m_password->text();
    if (!CheckLogon(name, password)) {
        SetTopmost(false);
        Dialogs::MsgBox(QStringLiteral("Invalid Username or Password!"), QStringLiteral("Login"),
                        Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
        m_user->setFocus();
        m_user->selectAll();
        // A user who clicks into the field types the whole password again.
        m_password->selectAll();
        return;
    }
    gUserName = name;
    gUserPassword = password;
    Finish();
}

void frmSplash::Cancel()
{
    gConnection.Close();
    m_timer.stop();
    if (isVisible())
        close();
    QCoreApplication::quit();
}
