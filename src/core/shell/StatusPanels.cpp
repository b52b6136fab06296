#include "core/shell/StatusPanels.h"

#include "core/session/Session.h"
#include "database/values/DecodeDateFunc.h"
#include "forms/fields/ModifiedMark.h"
#include "platform/desktop/Clock.h"

#include <QLabel>
#include <QPointer>
#include <QStatusBar>

StatusPanels::StatusPanels(QStatusBar *bar)
    : QObject(bar)
    , m_hint(MakePanel(bar, QStringLiteral("Panel_1")))
    , m_user(MakePanel(bar, QStringLiteral("Panel_User")))
    , m_time(MakePanel(bar, QStringLiteral("Panel_2")))
    , m_database(MakePanel(bar, QStringLiteral("Panel_3")))
{
    bar->addWidget(m_hint, 1);
    for (QLabel *panel : {m_user, m_time, m_database})
        bar->addPermanentWidget(panel);
    constexpr int howLong = 4000; // milliseconds
    m_saved.setObjectName(QStringLiteral("SavedTimer"));
    m_saved.setSingleShot(true);
    m_saved.setInterval(howLong);
    connect(&m_saved, &QTimer::timeout, m_hint, &QLabel::clear);
    ModifiedMark::WhenSaved() = [panels = QPointer(this)] {
        if (panels)
            panels->ShowSaved();
    };
}

QLabel *StatusPanels::MakePanel(QStatusBar *bar, const QString &name)
{
    auto *panel = new QLabel(bar);
    panel->setObjectName(name);
    panel->setTextFormat(Qt::PlainText);
    return panel;
}

void StatusPanels::ShowHint(const QString &hint)
{
    if (hint.isEmpty() && m_saved.isActive())
        return;
    m_saved.stop();
    m_hint->setText(hint);
}

void StatusPanels::ShowSaved()
{
    m_hint->setText(QStringLiteral("Saved"));
    m_saved.start();
}

void StatusPanels::ShowLogon()
{
    m_user->setText(gUserName.isEmpty() ? QString() : QString(u"User: " % gUserName % u"  "));
    m_time->setText(u"Logged in at " % GeneralDateText(Clock::Now()) % u"  ");
    m_database->setText(QStringLiteral("No Database.  "));
    m_database->setEnabled(false);
}

void StatusPanels::ShowDatabase(const QString &text)
{
    m_database->setText(text);
    m_database->setEnabled(true);
}

QString StatusPanels::Database() const
{
    return m_database->text().trimmed();
}
