#include "forms/frames/RecordForm.h"

#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "database/statements/Sentinel.h"
#include "forms/fields/RequiredMarks.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/RecordNavigator.h"
#include "forms/progress/ProgressBox.h"
#include "platform/desktop/Dialogs.h"

RecordForm::RecordForm(const Kind &kind, QWidget *parent)
    : FormDialog(kind.form, QStringLiteral("New Record"), parent)
    , m_kind(kind)
    , m_builder(std::make_unique<FormBuilder>(this))
{
    m_warn = m_builder->Line(QStringLiteral("Warn"), QString());
    m_warn->hide();
    m_tabs = m_builder->Tabs(QStringLiteral("SSActiveTabs1"));
}

RecordForm::~RecordForm() = default;

void RecordForm::BuildButtons(QWidget *between)
{
    FormBuilder &form = *m_builder;
    form.BeginButtons(FormBuilder::Align::Start);
    m_okBtn = form.DefaultButton(m_kind.okBtn, QStringLiteral("&Add Record"));
    m_newBtn = form.Button(QStringLiteral("NewBtn"), m_kind.newCaption);
    m_editBtn = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Edit"));
    m_prevBtn = form.Button(QStringLiteral("PrevBtn"), QStringLiteral("<< &Prev"));
    m_nextBtn = form.Button(QStringLiteral("NextBtn"), QStringLiteral("&Next >>"));
    m_clearBtn = form.Button(QStringLiteral("ClearBtn"), QStringLiteral("&Clear All"));
    m_refreshBtn =
        m_kind.canRefresh ? form.Button(QStringLiteral("MainRefBtn"), QStringLiteral("&Refresh")) : nullptr;
    form.Gap(between);
    m_exitBtn = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    m_builder.reset();

    m_modified = new ModifiedMark(m_okBtn, this);
    m_navigator = new RecordNavigator(
        m_prevBtn, m_nextBtn, *m_modified, [this] { Save(); },
        [this](const QString &key) { ShowKey(KeyNumber(key)); }, this);
    connect(m_okBtn, &QPushButton::clicked, this, &RecordForm::Save);
    connect(m_newBtn, &QPushButton::clicked, this, [this] {
        if (MayStartNew())
            StartRecord();
    });
    connect(m_editBtn, &QPushButton::clicked, this, &RecordForm::ToggleEdit);
    connect(m_clearBtn, &QPushButton::clicked, this, [this] { ClearPages(); });
    if (m_refreshBtn)
        connect(m_refreshBtn, &QPushButton::clicked, this, &RecordForm::Refresh);
    connect(m_exitBtn, &QPushButton::clicked, this, &RecordForm::reject);
}

void RecordForm::OpenRecords(const QStringList &keys, Open open)
{
    m_navigator->SetKeys(keys);
    ShowKey(KeyNumber(m_navigator->Key()));
    if (open == Open::Edit && !m_gone && May(Level::Edit))
        StartEditing(State::Edit);
    else // the first button of the record would write an e-mail
        (m_editBtn->isHidden() ? m_exitBtn : m_editBtn)->setFocus();
}

void RecordForm::done(int result)
{
    // Somebody who was added is not forgotten over another who was begun and given up.
    gDialogResult = m_key > 0 ? m_key : m_saved;
    FormDialog::done(result);
}

void RecordForm::OpenBeside(const QObject *caller, const std::function<void()> &changed)
{
    setAttribute(Qt::WA_DeleteOnClose);
    connect(this, &RecordForm::Stored, caller, changed);
    // Nobody waits for its answer.
    connect(this, &QDialog::finished, this, [] { gDialogResult = 0; });
    connect(this, &QDialog::finished, caller, changed);
    show();
    activateWindow();
}

bool RecordForm::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

bool RecordForm::May(Level level) const
{
    return UserMay(m_kind.right, level);
}

void RecordForm::ShowKey(int key)
{
    QWidget *focus = focusWidget();
    // The row that means "nobody" is not a record, however a caller came by its key.
    m_key = IsSentinel(key) ? 0 : key;
    m_gone = true;
    ShowLoading();
    const Found found = ReadRecord(m_key);
    if (found == Found::Missing)
        ShowDeleted();
    m_gone = found != Found::Whole;
    RecordRead();
    // After a failed read the record stays locked, with a button to try again.
    SetState(State::View);
    m_warn->hide();
    m_modified->Clear();
    KeepFocus(focus);
}

/// Gives the focus back to the field that had it: the pages are disabled while a record is read, so the field
/// loses it when the user steps through the records by key.
void RecordForm::KeepFocus(QWidget *focus)
{
    if (focus && focus->isEnabled() && focus->isVisible())
        focus->setFocus();
    else if (!focusWidget() || !focusWidget()->isEnabled())
        focusNextChild();
}

void RecordForm::ShowLoading()
{
    m_tabs->setEnabled(false);
    m_editBtn->hide();
    m_warn->setText(m_kind.loading);
    m_warn->show();
}

void RecordForm::ShowDeleted()
{
    EmptyPages();
    m_tabs->setCurrentIndex(0);
    ShowPlaceholder(m_kind.deleted);
}

void RecordForm::SetState(State state)
{
    m_state = state;
    const bool isNew = state == State::NewRecord;
    const bool editing = state != State::View;
    m_tabs->setEnabled(isNew || !m_gone);
    m_okBtn->setText(isNew ? QStringLiteral("&Add Record") : QStringLiteral("&Update Record"));
    m_okBtn->setEnabled(editing);
    m_clearBtn->setEnabled(editing);
    m_newBtn->setVisible(May(Level::Add));
    m_newBtn->setEnabled(!isNew);
    m_editBtn->setVisible(!isNew && !m_gone && May(Level::Edit));
    m_editBtn->setText(editing ? QStringLiteral("&View") : QStringLiteral("&Edit"));
    m_prevBtn->setVisible(!isNew && m_navigator->Count() > 0);
    m_nextBtn->setVisible(!isNew && m_navigator->Count() > 0);
    if (m_refreshBtn)
        m_refreshBtn->setVisible(!isNew);
    ApplyState(state);
    ShowCaption();
}

void RecordForm::StartEditing(State state)
{
    SetState(state);
    const QWidget *page = m_tabs->currentWidget();
    QWidget *field = page->nextInFocusChain();
    while (page->isAncestorOf(field) && !(field->isEnabled() && field->focusPolicy() & Qt::TabFocus))
        field = field->nextInFocusChain();
    if (page->isAncestorOf(field))
        field->setFocus(Qt::TabFocusReason);
}

void RecordForm::ShowCaption()
{
    switch (m_state) {
    case State::NewRecord:
        setWindowTitle(QStringLiteral("New Record"));
        break;
    case State::View:
        setWindowTitle(RecordName() % m_navigator->Position());
        break;
    case State::Edit:
        setWindowTitle(u"Editing " % RecordName());
        break;
    }
}

/// Whether another workstation has deleted the record, so that what is stored with it would belong to
/// nothing. If so, what was typed is kept as a new record if the user wants that.
bool RecordForm::IsDeleted()
{
    if (m_state == State::NewRecord || Exists(m_key))
        return false;
    const Dialogs::Answer answer =
        Dialogs::MsgBox(u"Another user has deleted this " % m_kind.word %
                            u" meanwhile.\nOkay to keep what is on the screen as a new record?",
                        QStringLiteral("Record Deleted"), Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
    if (answer == Dialogs::Answer::Yes)
        KeepAsNew();
    else
        ShowKey(m_key);
    return true;
}

void RecordForm::KeepAsNew()
{
    m_key = 0;
    m_navigator->SetKeys({});
    m_tabs->setCurrentIndex(0);
    DetachPages();
    StartEditing(State::NewRecord);
    m_modified->Set();
}

bool RecordForm::Save()
{
    if (!Required().MissingList().isEmpty())
        m_tabs->setCurrentIndex(0);
    if (!Required().Complete() || IsDeleted())
        return false;
    const RecordSaved saved = RunStore();
    if (saved.key < 1)
        return false;
    m_key = saved.key;
    m_saved = saved.key;
    m_gone = false;
    gDialogResult = saved.key;
    if (!saved.isWhole) {
        // The record itself is stored, but not everything that the pages show.
        SetState(State::Edit);
        m_modified->Set();
        IsDeleted();
        return false;
    }
    if (AfterStore(saved.key))
        ShowKey(saved.key);
    m_modified->Saved();
    SetState(State::View);
    emit Stored();
    return true;
}

RecordSaved RecordForm::RunStore()
{
    const QString title = u"Update " % m_kind.word.left(1).toUpper() % m_kind.word.mid(1);
    RecordSaved saved;
    const bool isFinished = ProgressBox::Run(this, title, [&](Progress &progress) {
        saved = StoreRecord(m_state == State::NewRecord ? 0 : m_key, progress);
    });
    if (!isFinished && saved.key == 0)
        Dialogs::MsgBox(QStringLiteral("Stopped. Nothing on this screen was stored."), title,
                        Dialogs::Buttons::Ok, Dialogs::Icon::Information);
    return saved;
}

void RecordForm::StartRecord()
{
    m_key = 0;
    m_gone = false;
    m_navigator->SetKeys({});
    m_tabs->setCurrentIndex(0);
    EmptyPages();
    StartEditing(State::NewRecord);
    m_modified->Clear();
}

void RecordForm::ToggleEdit()
{
    // Do not let the user edit a record that no longer exists.
    if (m_state == State::View && !m_modified->IsSet() && !Exists(m_key))
        ShowKey(m_key);
    else if (m_state == State::View)
        StartEditing(State::Edit);
    else
        SetState(State::View);
}

void RecordForm::Refresh()
{
    if (MayLeave())
        ShowKey(m_key);
}
