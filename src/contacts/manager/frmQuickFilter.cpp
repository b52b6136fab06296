#include "contacts/manager/frmQuickFilter.h"

#include "contacts/record/frmAddContact.h"
#include "forms/fields/FieldNote.h"
#include "forms/frames/FormBuilder.h"

#include <QKeyEvent>
#include <QLocale>

namespace
{
/// More would take longer to show than to find, and nobody reads them.
constexpr int mostShown = 1000;
} // namespace

frmQuickFilter::frmQuickFilter(QWidget *parent)
    : FormDialog(QStringLiteral("frmQuickFilter"), QStringLiteral("Quick Filter"), parent)
{
    m_found.SetColumns({QStringLiteral("Contact"), QStringLiteral("Telephone"), QStringLiteral("E-mail"),
                        QStringLiteral("Postcode")});
    FormBuilder form(this);
    m_entry = form.Text(QStringLiteral("FilterBox"),
                        QStringLiteral("&Name, telephone, e-mail or postcode contains:"));
    m_entry->setClearButtonEnabled(true);
    m_entry->installEventFilter(this);
    m_note = new FieldNote(m_entry);
    m_list = form.List(QStringLiteral("FoundList"), QStringLiteral("People found:"), m_found,
                       ListView::Choice::Multi);
    m_list->SetColumnChars({26, 15, 26, 10});
    form.BeginButtons();
    m_view = form.DefaultButton(QStringLiteral("ViewBtn"), QStringLiteral("&View Contact(s)"));
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    connect(m_entry, &QLineEdit::textChanged, this, &frmQuickFilter::Filter);
    connect(m_list, &ListView::Opened, this, &frmQuickFilter::ViewContacts);
    connect(m_view, &QPushButton::clicked, this, &frmQuickFilter::ViewContacts);
    connect(exit, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_found.Selection(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_view->setEnabled(m_found.Selection()->hasSelection()); });
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().lineSpacing() * 26);
    m_filter.Read();
    Filter();
    m_entry->setFocus();
}

void frmQuickFilter::Filter()
{
    const QString entry = m_entry->text().trimmed();
    const int count = m_filter.Find(entry, mostShown, m_found);
    if (count == 0 && !entry.isEmpty())
        m_note->Show(QStringLiteral("no match"), FieldNote::Tone::Warning);
    else
        m_note->Show(count > mostShown ? QString(u"the first " % QLocale().toString(mostShown) % u" of " %
                                                 QLocale().toString(count))
                                       : QString());
    m_list->SetEmptyText(entry.isEmpty() ? QStringLiteral("Type any part of what you know.")
                                         : QStringLiteral("Nobody found."));
    m_list->KeepOrder();
    m_found.SelectFirst();
    m_view->setEnabled(!m_found.IsEmpty());
}

void frmQuickFilter::ViewContacts()
{
    const QStringList keys = m_found.SelectedKeys();
    if (keys.isEmpty())
        return;
    frmAddContact::ShowRecords(keys, this);
    m_filter.Read();
    Filter();
    if (const int row = m_found.Find(keys.first()); row >= 0) {
        m_found.SelectOnly(row);
        m_found.SelectKeys(keys);
        m_list->ShowRow(row);
    }
}

bool frmQuickFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_entry && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Down) {
        m_list->setFocus(Qt::OtherFocusReason);
        return true;
    }
    return FormDialog::eventFilter(watched, event);
}
