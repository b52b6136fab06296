#include "reports/wizard/WizardForm.h"

#include "forms/lists/ListPrint.h"
#include "reports/wizard/WizardRunPage.h"

WizardForm::WizardForm(const QString &name, const QString &title, QWidget *parent)
    : FormDialog(name, title, parent)
    , m_pages(new WizardPages(this))
{
    m_pages->setObjectName(QStringLiteral("SSActiveTabs1"));
}

void WizardForm::Start(WizardRunPage *run)
{
    m_run = run;
    SSWizardNavBar1 = new SSWizardNavBar(m_pages, this);
    SSWizardNavBar1->LayOutBelowPages();
    ListPrint::BindKey(this);
    const auto onPageShown = [this](int page) {
        ShowOffer();
        Enter(page);
    };
    connect(SSWizardNavBar1, &SSWizardNavBar::PageShown, this, onPageShown);
    connect(SSWizardNavBar1, &SSWizardNavBar::Click, this, &WizardForm::OnClick);
    connect(m_run, &WizardRunPage::RunningChanged, this, &WizardForm::ShowOffer);
    onPageShown(m_pages->currentIndex());
}

void WizardForm::ShowOffer()
{
    const Offer offer = m_run->IsRunning() ? Offer{.back = false} : Offered(m_pages->currentIndex());
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Back, offer.back && SSWizardNavBar1->HasBack());
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Next, offer.next);
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Finish, offer.finish);
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Cancel, offer.cancel);
}

void WizardForm::OnClick(int code)
{
    if (code == SSWizardNavBar::Next)
        OnNext();
    else if (code == SSWizardNavBar::Finish)
        OnFinish();
}

bool WizardForm::MayLeave()
{
    m_run->Stop();
    return !m_run->IsRunning();
}
