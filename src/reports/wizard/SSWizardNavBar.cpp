#include "reports/wizard/SSWizardNavBar.h"

#include "forms/frames/ButtonRow.h"
#include "platform/desktop/Dialogs.h"

#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

QWidget *WizardPages::AddPage(const QString &name, const QString &title)
{
    auto *page = new QWidget(this);
    page->setObjectName(name);
    auto *heading = new QLabel(title, page);
    heading->setObjectName(name % u"_Title");
    QFont font = heading->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.25);
    heading->setFont(font);
    auto *content = new QWidget(page);
    content->setObjectName(name % u"_Content");
    heading->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin), 0, 0, 0);
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(heading);
    column->addWidget(content, 1);
    addWidget(page);
    m_available.push_back(true);
    return content;
}

void WizardPages::SetAvailable(int page, bool available)
{
    m_available[static_cast<size_t>(page)] = available;
}

SSWizardNavBar::SSWizardNavBar(WizardPages *pages, QWidget *parent)
    : QWidget(parent)
    , m_pages(pages)
{
    static constexpr const char *captions[] = {"&Help", "< &Back", "&Next >", "&Finish", "Cancel"};
    auto *row = new ButtonRow;
    setLayout(row);
    row->setContentsMargins(0, 0, 0, 0);
    for (int code = Help; code <= Cancel; ++code) {
        auto *button = new QPushButton(QString::fromLatin1(captions[code]), this);
        button->setObjectName(u"cmdNav_" % QString::number(code));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, code] { OnClick(code); });
        row->addWidget(button);
        if (code == Help)
            row->addStretch();
        cmdNav[static_cast<size_t>(code)] = button;
    }
    setObjectName(QStringLiteral("SSWizardNavBar1"));
    SetEnabled(Finish, false);
}

void SSWizardNavBar::LayOutBelowPages()
{
    auto *column = new QVBoxLayout(parentWidget());
    // The fields of a page have margins of their own; the strip is aligned with them.
    column->setContentsMargins(0, column->contentsMargins().top(), 0, column->contentsMargins().bottom());
    layout()->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin), 0,
                                 style()->pixelMetric(QStyle::PM_LayoutRightMargin), 0);
    column->addWidget(m_pages, 1);
    column->addWidget(this);
}

void SSWizardNavBar::SetEnabled(Code button, bool enabled)
{
    cmdNav[button]->setEnabled(enabled);
    // Enter goes to the next page, or ends the wizard if there is none.
    const bool onward = cmdNav[Next]->isEnabled() || !cmdNav[Finish]->isEnabled();
    cmdNav[Next]->setDefault(onward);
    cmdNav[Finish]->setDefault(!onward);
}

int SSWizardNavBar::NextPage() const
{
    for (int page = m_pages->currentIndex() + 1; page < m_pages->count(); ++page) {
        if (m_pages->IsAvailable(page))
            return page;
    }
    return -1;
}

void SSWizardNavBar::GoNext()
{
    const int page = NextPage();
    if (page >= 0)
        GoTo(page);
}

void SSWizardNavBar::GoTo(int page)
{
    m_visited.push_back(m_pages->currentIndex());
    Show(page);
}

void SSWizardNavBar::GoBack()
{
    while (!m_visited.empty()) {
        const int page = m_visited.back();
        m_visited.pop_back();
        if (!m_pages->IsAvailable(page))
            continue;
        Show(page);
        return;
    }
}

void SSWizardNavBar::ReturnTo(int page)
{
    m_visited.erase(std::find(m_visited.begin(), m_visited.end(), page), m_visited.end());
    Show(page);
}

void SSWizardNavBar::Show(int page)
{
    m_pages->setCurrentIndex(page);
    emit PageShown(page);
}

void SSWizardNavBar::OnClick(int code)
{
    if (code == Help)
        Dialogs::MsgBox(QStringLiteral("Help not available."), {}, Dialogs::Buttons::Ok,
                        Dialogs::Icon::Information);
    else if (code == Back)
        GoBack();
    emit Click(code);
    if (code == Cancel)
        window()->close();
}
