#include "courses/booking/SelectDialog.h"

#include "core/session/Session.h"

SelectDialog::SelectDialog(const QString &name, const QString &title, const SelectTarget &target,
                           QWidget *parent)
    : FormDialog(name, title, parent)
    , m_tree(target.tree)
    , m_eventRef(target.eventRef)
    , m_hours(target.hours)
{
}

FormBuilder::Pair SelectDialog::BuildLists(FormBuilder &form, const FormBuilder::PairNames &names,
                                           Holders::Of what)
{
    const FormBuilder::Pair pair = form.UsedAvailablePair(names, m_available, m_used);
    if (m_eventRef && m_hours.date != 0) {
        m_available.SetColumns({QStringLiteral("Name"), QStringLiteral("Free or taken")});
        pair.available->SetColumnChars({24, 26});
        m_holders.Add(m_available, what);
    }
    pair.available->SetEmptyText(QStringLiteral("Nothing more is available."));
    pair.used->SetEmptyText(QStringLiteral("Nothing is chosen yet."));
    connect(pair.moves, &UsedAvailable::Moved, this, &SelectDialog::ShowHolders);
    form.BeginButtons();
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    connect(exit, &QPushButton::clicked, this, [this] {
        AddToTree();
        gDialogResult = 1;
        accept();
    });
    // A provider has some hundred rooms and tutors to choose from.
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 28);
    return pair;
}

void SelectDialog::ShowHolders()
{
    m_holders.Show(m_hours, m_eventRef);
    if (!m_eventRef || m_hours.date == 0)
        return;
    for (int row = 0; row < m_available.Count(); ++row) {
        const QString holder = HeldInTree(m_eventRef, KeyNumber(m_available.At(row).key));
        if (!holder.isEmpty() && m_available.At(row).subItems.value(0) == Holders::freeText)
            m_available.SetSubItem(row, 0, Holders::HolderText(holder, m_hours));
    }
}

QString SelectDialog::HeldInTree(EventRef, int) const
{
    return {};
}

bool SelectDialog::MayLeave()
{
    return Chosen() == 0 || Dialogs::MsgBox(QStringLiteral("Leave without adding what was chosen?"),
                                            windowTitle(), Dialogs::Buttons::YesNo, Dialogs::Icon::Question,
                                            Dialogs::Answer::No) == Dialogs::Answer::Yes;
}
