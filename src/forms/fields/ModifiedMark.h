#pragma once

#include "platform/desktop/Dialogs.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

class ListModel;
class QAbstractButton;
class TreeModel;

/// The one "modified" flag of a record form, set by every field's change, and the save button that is
/// painted in the highlight colour while it is set and something differs: a text that is typed back to what
/// it was leaves nothing to save. A timer does the painting, so that loading a record (many changes, then
/// Clear) does not make the button flicker.
class ModifiedMark final : public QObject
{
    Q_OBJECT

public:
    /// `saveButton` may be null: then there is only the flag.
    explicit ModifiedMark(QAbstractButton *saveButton, QObject *parent = nullptr);

    /// From now on every text, combo, date, check and option below `root` sets the flag. Lists do not, since
    /// most only show something: watch the models of those that belong to the record.
    void Watch(QWidget *root);
    void Watch(ListModel &list);
    void Watch(TreeModel &tree);
    /// Leaves out a field that belongs to the screen and not to the record (a search box, a filter). Call it
    /// before Watch.
    void Ignore(QWidget *field);

    bool IsSet() const { return m_set; }
    void Set();
    void Clear();
    /// Clears the flag because what was changed is stored now, and tells whoever wants to know.
    void Saved();
    /// Tells whoever wants to know of a save without a record on the screen.
    static void TellSaved();
    /// What is called at each save; the main window installs it.
    static std::function<void()> &WhenSaved();

    /// Asks the question on leaving; true if the form may close. Yes runs `save`, after which the flag tells
    /// whether it worked; No leaves; Cancel stays. An unmodified form may close without a question.
    bool AskToSave(const std::function<void()> &save, Dialogs::Answer defaultAnswer = Dialogs::Answer::None);

private:
    struct Field {
        QPointer<QWidget> widget;
        QString before; ///< what it held when the flag was last cleared
    };
    void OnField();
    bool Differs() const;
    void Paint();

    QAbstractButton *m_saveButton;
    QSet<QWidget *> m_ignored;
    QTimer m_timer;
    std::vector<Field> m_fields;
    bool m_set = false;
    bool m_setByOthers = false; ///< by anything but a field
    bool m_stale = false;       ///< something changed since the button was painted
    bool m_painted = false;
};
