#include "forms/frames/ItemDialog.h"

#include "core/session/Session.h"
#include "forms/frames/FormBuilder.h"

#include <QLabel>

ItemDialog::ItemDialog(const QString &name, const QString &title, QWidget *parent)
    : FormDialog(name, title, parent)
{
}

void ItemDialog::AddNotice(FormBuilder &form)
{
    m_notice = form.Line(QStringLiteral("Warn"), QString());
    m_notice->hide();
}

void ItemDialog::Notify(const QString &text)
{
    m_notice->setText(text);
    m_notice->setVisible(!text.isEmpty());
}

void ItemDialog::AddButtons(FormBuilder &form, const QString &exitName)
{
    form.BeginButtons();
    m_addBtn = form.DefaultButton(QStringLiteral("AddBtn"), QStringLiteral("&Add"));
    QPushButton *exit = form.Button(exitName, QStringLiteral("E&xit"));
    form.EndButtons();
    m_modified = new ModifiedMark(m_addBtn, this);
    m_modified->Watch(this);
    connect(m_addBtn, &QPushButton::clicked, this, &ItemDialog::Save);
    connect(exit, &QPushButton::clicked, this, &ItemDialog::reject);
}

void ItemDialog::BeginEditing(int key)
{
    m_key = key;
    m_addBtn->setText(QStringLiteral("&Update"));
    m_addBtn->setEnabled(false);
}

void ItemDialog::EndReading(bool found, const QString &what)
{
    m_addBtn->setEnabled(found);
    if (!found)
        Notify(u"The " % what % u" No. " % QString::number(m_key) %
               u" cannot be read, and nothing can be stored here. Another user may have deleted it.");
    m_modified->Clear();
}

void ItemDialog::LockStoring()
{
    m_addBtn->setEnabled(false);
}

bool ItemDialog::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void ItemDialog::Save()
{
    LeaveFields();
    if (!m_addBtn->isEnabled() || !m_required.Complete())
        return;
    const int key = Store();
    if (key < 1) {
        m_required.FocusFirst();
        return;
    }
    m_modified->Saved();
    gDialogResult = key;
    accept();
}
