#include "contacts/manager/frmContact.h"

#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/manager/ContactSelection.h"
#include "contacts/manager/PeopleRun.h"
#include "contacts/manager/frmSearchContact.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/frmAddContact.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentModule.h"
#include "forms/fields/FieldLock.h"
#include "forms/fields/FormKeys.h"
#include "forms/fields/ModifiedMark.h"
#include "forms/fields/SearchBox.h"
#include "forms/frames/ColumnChoice.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormSize.h"
#include "forms/frames/OtherScreens.h"
#include "forms/lists/DeleteSelected.h"
#include "platform/desktop/Dialogs.h"

#include <QMenu>
#include <QScopedValueRollback>

namespace
{
ColumnChoice::Column Offered(PersonDetail detail, int chars)
{
    return {PersonDetailTitle(detail), chars};
}
} // namespace

frmContact::frmContact(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmContact"));
    setWindowTitle(QStringLiteral("Contact Manager"));
    {
        FormBuilder form(this);
        BuildLists(form);
        BuildButtons(form);
    }
    BuildMenu();
    connect(&m_subset, &ComboModel::CurrentChanged, this, [this] {
        if (!m_filling)
            FillContacts();
    });
    m_charList->SetNewTextHandler([this](const QString &typed) { NewCharacteristic(typed); },
                                  ContactSectionOf(ContactSection::Characteristics).word);
    connect(&m_characteristics, &ComboModel::CurrentChanged, this, &frmContact::EnableButtons);
    connect(&m_selected, &ListModel::Changed, this, &frmContact::EnableButtons);
    connect(m_contacts.Selection(), &QItemSelectionModel::selectionChanged, this, &frmContact::EnableButtons);
    FormSize::Remember(this);
    Form_Refresh();
}

void frmContact::BuildLists(FormBuilder &form)
{
    QLineEdit *search = form.Text(QStringLiteral("SearchBox"), QStringLiteral("Search for Con&tact:"));
    search->setClearButtonEnabled(true);
    form.Combo(QStringLiteral("ConcessionList"), QStringLiteral("Sub-set by Characteristic:"), m_subset);

    m_contacts.SetColumns({QStringLiteral("Contact")});
    m_selected.SetColumns({QStringLiteral("Contact"), QStringLiteral("Address"), QStringLiteral("City"),
                           QStringLiteral("Postcode")});
    FormBuilder::PairNames names;
    names.available = QStringLiteral("ContactList2");
    names.availableCaption = QStringLiteral("Available Contacts");
    names.used = QStringLiteral("ContactInfo");
    names.usedCaption = QStringLiteral("Selected Contacts:");
    const FormBuilder::Pair pair = form.UsedAvailablePair(names, m_contacts, m_selected);
    m_contactList = pair.available;
    m_contactInfo = pair.used;
    m_moves = pair.moves;
    m_contactList->SetEmptyText(QStringLiteral("No contacts to show."));
    m_contactInfo->SetEmptyText(QStringLiteral("No contacts selected."));
    m_contactInfo->SetColumnChars({20, 13, 10, 11});
    m_moves->SetActions(
        {[this] { AddSelected(); }, [this] { RemoveSelected(); }, [this] { ClearSelected(); }});
    m_columns = new ColumnChoice(objectName(), m_contactList, {{QStringLiteral("Contact"), 22}},
                                 {Offered(PersonDetail::Telephone, 18), Offered(PersonDetail::Town, 14),
                                  Offered(PersonDetail::Email, 26), Offered(PersonDetail::Organisation, 20)});
    connect(m_columns, &ColumnChoice::Changed, this, &frmContact::FillAnew);
    BindSearchBox(search, m_contactList, [this] { OpenChosen(); });
    m_contactList->SetEnterHandler([this] { OpenChosen(); });

    m_charList =
        form.Typed(QStringLiteral("CharList"), QStringLiteral("Apply Characteristic:"), m_characteristics);
    form.Beside();
    form.Line(QStringLiteral("ApplyTo"), QStringLiteral("to Selected Contacts"))->setWordWrap(false);
    form.Beside();
    m_applyBtn = form.Button(QStringLiteral("AddToConBtn"), QStringLiteral("Apply"));
    connect(m_applyBtn, &QPushButton::clicked, this, &frmContact::ApplyCharacteristic);

    for (ListView *list : {m_contactList, m_contactInfo}) {
        list->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(list, &QWidget::customContextMenuRequested, this,
                [this, list](const QPoint &at) { ShowMenu(list, at); });
    }
}

void frmContact::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_addBtn = form.Button(QStringLiteral("AddBtn"), QStringLiteral("&New Contact"));
    m_viewBtn = form.Button(QStringLiteral("ViewBtn"), QStringLiteral("&View Contact(s)"));
    m_delBtn = form.Button(QStringLiteral("DelCBtn"), QStringLiteral("Delete"));
    m_delBtn->setToolTip(QStringLiteral("Delete the people selected in the available contacts"));
    form.EndButtons();
    // In two rows, so that half of a desktop 1280 wide holds them.
    form.BeginButtons(FormBuilder::Align::Start);
    QPushButton *find = form.Button(QStringLiteral("FindBtn"), QStringLiteral("&Search"));
    m_repBtn = form.Button(QStringLiteral("RepBtn"), QStringLiteral("&Reports"));
    m_refreshBtn = form.Button(QStringLiteral("RefBtn"), QStringLiteral("Refresh"));
    form.Gap();
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    connect(m_addBtn, &QPushButton::clicked, this, &frmContact::NewContact);
    connect(m_viewBtn, &QPushButton::clicked, this, &frmContact::ViewContacts);
    connect(m_delBtn, &QPushButton::clicked, this, &frmContact::DeleteChosen);
    connect(m_contactList, &ListView::DeletePressed, m_delBtn, &QPushButton::click);
    connect(find, &QPushButton::clicked, this, &frmContact::Search);
    // Alt+S is the letter of the Security menu too.
    FormKeys::Bind(this, Qt::Key_F3, find);
    connect(m_repBtn, &QPushButton::clicked, this, &frmContact::OpenReports);
    connect(m_refreshBtn, &QPushButton::clicked, this, &frmContact::Refresh);
    connect(exit, &QPushButton::clicked, this, [this] { (parentWidget() ? parentWidget() : this)->close(); });
}

void frmContact::Form_Refresh()
{
    // After a switch of the database the selected keys belong to other people.
    m_selected.Clear();
    {
        const QScopedValueRollback<bool> filling(m_filling, true);
        m_subset.Clear();
    }
    FillCharacteristics();
    FillApplied();
    FillContacts();
    ApplyRights();
}

void frmContact::FillApplied()
{
    Contact_FillList(ContactSection::Characteristics, m_characteristics, true);
    m_characteristics.SetCurrent(-1);
}

void frmContact::ApplyRights()
{
    m_repBtn->setEnabled(UserMay(Right::ContactReports, Level::Full));
    m_addBtn->setEnabled(UserMay(Right::Contacts, Level::Add));
    m_charList->setEnabled(UserMay(Right::ApplyCharacteristic, Level::Full));
    m_charList->AllowTyping(UserMay(Right::Characteristics, Level::Add));
    EnableButtons();
}

void frmContact::EnableButtons()
{
    EnableButton(m_delBtn, UserMay(Right::Contacts, Level::Full) && m_contacts.Selection()->hasSelection(),
                 m_contactList);
    m_applyBtn->setEnabled(UserMay(Right::ApplyCharacteristic, Level::Full) &&
                           m_characteristics.Current() >= 0 && !m_selected.IsEmpty());
    m_viewBtn->setEnabled(!m_selected.IsEmpty());
}

void frmContact::FillCharacteristics()
{
    const QScopedValueRollback<bool> filling(m_filling, true);
    Contact_FillSubsetList(m_subset);
}

void frmContact::FillContacts()
{
    QList<PersonDetail> details;
    for (const int column : m_columns->Chosen())
        details.append(AllPersonDetails().at(column));
    PeopleRun::FillSubset(this, ConcessionRef(m_subset.CurrentData()), m_contacts, details);
    EnableButtons();
}

/// With the same people selected, and shown.
void frmContact::FillAnew()
{
    const QStringList chosen = m_contacts.SelectedKeys();
    FillContacts();
    if (chosen.isEmpty())
        return;
    if (const int row = m_contacts.Find(chosen.first()); row >= 0) {
        m_contacts.SelectOnly(row);
        m_contactList->ShowRow(row);
    }
    m_contacts.SelectKeys(chosen);
}

bool frmContact::StoreSelection()
{
    return PeopleRun::Publish(this, m_selected);
}

/// False on an error.
bool frmContact::DropDeleted(const QString &title)
{
    const int before = m_selected.Count();
    const bool read = Contact_DropDeleted(m_selected, title);
    if (m_selected.Count() != before)
        StoreSelection();
    return read;
}

void frmContact::AddSelected()
{
    PeopleRun::SelectChosen(this, m_contacts, m_selected);
    StoreSelection();
}

void frmContact::RemoveSelected()
{
    m_selected.Take(m_selected.SelectedRows());
    StoreSelection();
}

void frmContact::ClearSelected()
{
    m_selected.Clear();
    StoreSelection();
}

void frmContact::DeleteChosen()
{
    bool selectionChanged = false;
    const auto erase = [&](const ListItem &person) {
        if (!Contact_DeleteItem(ContactSection::Contacts, KeyNumber(person.key)))
            return Deletion::Failed;
        selectionChanged = selectionChanged || m_selected.Contains(person.key);
        m_selected.RemoveKey(person.key);
        return Deletion::Done;
    };
    DeleteSelected(m_contacts, erase, QStringLiteral("record"), [](const ListItem &person) {
        return Contact_EnrolledText(ContactRef(KeyNumber(person.key)));
    });
    if (selectionChanged)
        StoreSelection();
}

void frmContact::NewContact()
{
    frmAddContact::OpenBeside({}, this, [this] { Refresh(); });
}

/// Opens the people selected in the available contacts, without a detour over the selected ones.
void frmContact::OpenChosen()
{
    const QStringList keys = m_contacts.SelectedKeys();
    if (keys.isEmpty())
        return;
    frmAddContact::OpenBeside(keys, this, [this] { Refresh(); });
}

void frmContact::ViewContacts()
{
    if (m_selected.IsEmpty())
        return;
    const bool all = !m_selected.Selection()->hasSelection();
    QStringList keys;
    for (int row = 0; row < m_selected.Count(); ++row) {
        if (all || m_selected.IsSelected(row))
            keys.append(m_selected.At(row).key);
    }
    frmAddContact::OpenBeside(keys, this, [this] { Refresh(); });
}

void frmContact::OpenReports()
{
    // Another list of people, or another workstation, may have been published since.
    if (!StoreSelection())
        return;
    OtherScreens::Installed().contactReports(!m_selected.IsEmpty(), this);
}

void frmContact::Refresh()
{
    FillCharacteristics();
    const int applied = m_characteristics.Current() >= 0 ? m_characteristics.CurrentData() : 0;
    FillApplied();
    m_characteristics.ChooseData(applied);
    FillAnew();
    RereadSelection();
}

void frmContact::Search()
{
    frmSearchContact(m_selected, this).Run();
    Refresh();
}

void frmContact::RereadSelection()
{
    const QStringList chosen = m_selected.SelectedKeys();
    const int before = m_selected.Count();
    PeopleRun::Refresh(this, m_selected);
    m_selected.SelectKeys(chosen);
    if (m_selected.Count() != before)
        StoreSelection();
}

void frmContact::ApplyCharacteristic()
{
    m_charList->Leave();
    const int characteristic = m_characteristics.CurrentData();
    if (characteristic < 1)
        return;
    const QString title = QStringLiteral("Contact Update");
    const int living = Concession_Check(ConcessionRef(characteristic), title);
    if (living == 0)
        FillCharacteristics();
    if (living < 1 || !DropDeleted(title))
        return;
    bool isStored = false;
    PeopleRun::Run(this, title, QStringLiteral("Those have the characteristic, the rest are as they were."),
                   [&](Progress &progress) {
                       isStored =
                           ADO_Contact_AddConcessionList(ConcessionRef(characteristic), m_selected, progress);
                   });
    if (isStored)
        ModifiedMark::TellSaved();
    if (m_subset.CurrentData() > 0)
        FillContacts();
}

void frmContact::NewCharacteristic(const QString &typed)
{
    Contact_TakeTyped(ContactSection::Characteristics, m_characteristics, typed);
    FillCharacteristics();
}

void frmContact::BuildMenu()
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("Menu"));
    const auto add = [this](const QString &name, const QString &caption, auto &&deed) {
        QAction *action = m_menu->addAction(caption, this, deed);
        action->setObjectName(name);
        return action;
    };
    add(QStringLiteral("ID_NewContact"), QStringLiteral("&New Contact\tCtrl+N"), &frmContact::NewContact);
    m_menu->addSeparator();
    add(QStringLiteral("ID_Add"), QStringLiteral("&Add"), &frmContact::AddSelected);
    add(QStringLiteral("ID_Remove"), QStringLiteral("Re&move"), &frmContact::RemoveSelected);
    add(QStringLiteral("ID_SelectAll"), QStringLiteral("&Select All"),
        [this] { m_menuList->Model().SelectAll(); });
    add(QStringLiteral("ID_Delete"), QStringLiteral("&Delete"), &frmContact::DeleteChosen);
    m_menu->addSeparator();
    add(QStringLiteral("ID_Find"), QStringLiteral("&Find\tF3"), &frmContact::Search);
    add(QStringLiteral("ID_Refresh"), QStringLiteral("&Refresh\tF5"), &frmContact::Refresh);
    m_menu->addSeparator();
    QMenu *columns = m_menu->addMenu(QStringLiteral("&Columns"));
    connect(columns, &QMenu::aboutToShow, this, [this, columns] {
        columns->clear();
        m_columns->FillMenu(columns);
    });
}

void frmContact::ShowMenu(ListView *list, const QPoint &at)
{
    m_menuList = list;
    const auto enable = [this](const QString &name, bool enabled) {
        m_menu->findChild<QAction *>(name)->setEnabled(enabled);
    };
    enable(QStringLiteral("ID_NewContact"), m_addBtn->isEnabled());
    enable(QStringLiteral("ID_Add"), m_contacts.Selection()->hasSelection());
    enable(QStringLiteral("ID_Remove"), m_selected.Selection()->hasSelection());
    enable(QStringLiteral("ID_SelectAll"), !list->Model().IsEmpty());
    enable(QStringLiteral("ID_Delete"), m_delBtn->isEnabled());
    m_menu->popup(list->viewport()->mapToGlobal(at));
}
