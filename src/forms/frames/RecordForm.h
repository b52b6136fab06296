#pragma once

#include "database/statements/Rights.h"
#include "database/statements/WholeSave.h"
#include "forms/frames/FormDialog.h"

#include <functional>
#include <memory>

class FormBuilder;
class QLabel;
class QPushButton;
class QTabWidget;
class RecordNavigator;
class RequiredMarks;

/// The frame of a record screen: the notice, the tabs, the row of buttons, the states of a record, stepping
/// through a list of records, and leaving. It opens for a new record, or with a list of records to step
/// through; a stored record is shown first and edited on request. When a modal one closes, gDialogResult has
/// the key of the record that it last showed or saved, 0 for none.
///
/// A subject adds its pages to Tabs in its constructor, then calls BuildButtons, watches what belongs to the
/// record, and ends with StartRecord.
class RecordForm : public FormDialog
{
    Q_OBJECT

public:
    ~RecordForm() override;

    enum class Open { View, Edit };
    /// Takes a list of records ("?" keys) and shows the first, to look at or, if the user may, to change.
    void OpenRecords(const QStringList &keys, Open open = Open::View);

    /// Shows the form beside its caller, which stays in use, until it is closed; then it deletes itself.
    /// `changed` is called after each save and once more at the end, while `caller` exists.
    void OpenBeside(const QObject *caller, const std::function<void()> &changed);
    void done(int result) override;

signals:
    void Stored();

protected:
    struct Kind {
        QString form;       ///< name of the form
        QString okBtn;      ///< name of the button that saves
        QString newCaption; ///< of the button for a new record
        QString word;       ///< what a record is called within a sentence
        QString loading;    ///< shown while a record is read
        QString deleted;    ///< shown in place of the name of a record that is gone
        Right right;        ///< who may add and change
        bool canRefresh = false;
    };
    enum class State { NewRecord, View, Edit };
    enum class Found {
        Whole,
        Part, ///< lists of the record could not be read: it is shown but stays locked
        Missing,
        Failed
    };

    RecordForm(const Kind &kind, QWidget *parent);

    /// False if another workstation has deleted the record; true after an error.
    virtual bool Exists(int key) = 0;
    /// Reads a record into the pages.
    virtual Found ReadRecord(int key) = 0;
    /// Shows what is left once it is known whether there is a record.
    virtual void RecordRead() {}
    template <typename Row>
    static Found FoundIn(const Row &file)
    {
        if (!file)
            return file.IsMissing() ? Found::Missing : Found::Failed;
        return file->isWhole ? Found::Whole : Found::Part;
    }
    virtual void ShowPlaceholder(const QString &text) = 0;
    /// Stores the record (a new one if `key` is 0) with everything that belongs to it; nothing if `progress`
    /// is cancelled.
    virtual RecordSaved StoreRecord(int key, Progress &progress) = 0;
    /// Asks and does what is left once everything is stored. True if the record must be read again.
    virtual bool AfterStore(int key) = 0;
    /// Empties the pages for the user.
    virtual void ClearPages() = 0;
    /// Prepares the pages for a record that does not exist yet.
    virtual void EmptyPages() = 0;
    /// Tells the pages that what they show belongs to a record that does not exist yet.
    virtual void DetachPages() {}
    virtual void ApplyState(State state) = 0;
    virtual const RequiredMarks &Required() const = 0;
    virtual QString RecordName() const = 0;
    /// False keeps the record shown.
    virtual bool MayStartNew() = 0;

    bool MayLeave() override;

    FormBuilder &Builder() { return *m_builder; }
    QTabWidget *Tabs() const { return m_tabs; }
    ModifiedMark &Modified() const { return *m_modified; }
    QPushButton *NewBtn() const { return m_newBtn; }
    int Key() const { return m_key; }
    /// Whether the record shown could not be read or no longer exists.
    bool IsGone() const { return m_gone; }
    /// `between` is what is shown in the row of buttons, if anything.
    void BuildButtons(QWidget *between = nullptr);
    /// Shows an empty form, ready for a new record.
    void StartRecord();

private:
    bool May(Level level) const;
    void ShowKey(int key);
    void ShowLoading();
    void ShowDeleted();
    void KeepFocus(QWidget *focus);
    void SetState(State state);
    /// Switches to a state in which the user can type, and to the first field of the page.
    void StartEditing(State state);
    void ShowCaption();
    bool IsDeleted();
    void KeepAsNew();
    bool Save();
    RecordSaved RunStore();
    void ToggleEdit();
    void Refresh();

    Kind m_kind;
    State m_state = State::NewRecord;
    int m_key = 0;   ///< of the record shown; 0 for a new one
    int m_saved = 0; ///< the record saved last; 0 if none was
    bool m_gone = false;

    std::unique_ptr<FormBuilder> m_builder; ///< until the buttons are built
    QLabel *m_warn;
    QTabWidget *m_tabs;
    QPushButton *m_okBtn;
    QPushButton *m_newBtn;
    QPushButton *m_editBtn;
    QPushButton *m_exitBtn;
    QPushButton *m_prevBtn;
    QPushButton *m_nextBtn;
    QPushButton *m_clearBtn;
    QPushButton *m_refreshBtn;
    ModifiedMark *m_modified;
    RecordNavigator *m_navigator;
};
