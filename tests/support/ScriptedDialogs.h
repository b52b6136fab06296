#pragma once

#include "platform/desktop/Dialogs.h"

#include <deque>

/// The user of a test: a queue of the boxes that must come, with their answers. A box that nobody
/// expected fails the test, and so does an expected one that never came.
class ScriptedDialogs final
{
public:
    ScriptedDialogs();
    ~ScriptedDialogs();
    ScriptedDialogs(const ScriptedDialogs &) = delete;
    ScriptedDialogs &operator=(const ScriptedDialogs &) = delete;

    void Expect(const QString &title, const QString &text, Dialogs::Answer answer = Dialogs::Answer::Ok);
    /// The box that tells of a statement of the session that failed as every other one does now.
    void ExpectFailure();
    /// The next file chooser, of that title, gives `file`; "" = cancelled.
    void ExpectFile(const QString &title, const QString &file);
    /// The box that settles changes comes with these, each as "field: yours / theirs"; of the fields `theirs`
    /// that side is kept, of the others yours. Without it the user goes back to the record.
    void ExpectChanges(const QString &what, const QStringList &changes,
                       const std::optional<QStringList> &theirs);
    bool AllCame() const { return m_boxes.empty() && m_files.empty() && m_changes.empty(); }

    struct Box {
        QString title;
        QString text;
        Dialogs::Answer answer;
    };
    struct File {
        QString title;
        QString file;
    };
    struct Changes {
        QString what;
        QStringList changes;
        std::optional<QStringList> theirs;
    };

private:
    bool OnChanges(const QString &what, QList<Dialogs::FieldChange> &changes);
    Dialogs::Answer OnBox(const QString &text, const QString &title);
    QString OnFile(const QString &title);
    std::deque<Box> m_boxes;
    std::deque<File> m_files;
    std::deque<Changes> m_changes;
    Dialogs::Hooks m_outer;
};
