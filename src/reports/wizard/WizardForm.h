#pragma once

#include "forms/frames/FormDialog.h"
#include "reports/wizard/SSWizardNavBar.h"

class WizardRunPage;

/// The frame of a wizard: its pages, the strip of buttons below them, and the run on one of its pages. While
/// the work runs there is only Cancel; that, Escape and the window's close button stop it, and the form stays
/// open until the user has seen the outcome.
class WizardForm : public FormDialog
{
    Q_OBJECT

protected:
    WizardForm(const QString &name, const QString &title, QWidget *parent);

    /// What the strip offers on a page. Back is offered only if there is a way back.
    struct Offer {
        bool back = true;
        bool next = false;
        bool finish = false;
        bool cancel = true;
    };

    /// Called once all pages are added: lays the strip out below them and shows the first.
    void Start(WizardRunPage *run);
    /// Updates what the strip offers; this happens automatically for each page, and when a run begins and
    /// ends.
    void ShowOffer();
    bool MayLeave() final;

    virtual Offer Offered(int page) const = 0;
    /// Gives the focus to the page that is now shown.
    virtual void Enter(int page) = 0;
    virtual void OnNext() { SSWizardNavBar1->GoNext(); }
    virtual void OnFinish() { accept(); }

    WizardPages *m_pages;
    SSWizardNavBar *SSWizardNavBar1 = nullptr; ///< once Start has run

private:
    void OnClick(int code);

    WizardRunPage *m_run = nullptr;
};
