#include "support/ScriptedDialogs.h"

#include "core/session/Session.h"
#include "platform/connection/Connection.h"

#include <QTest>

namespace
{
void Fail(const QString &message)
{
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}
/// A real user can only press a button that is there.
bool Offers(Dialogs::Buttons buttons, Dialogs::Answer answer)
{
    using Dialogs::Answer;
    using Dialogs::Buttons;
    switch (answer) {
    case Answer::Ok:
        return buttons == Buttons::Ok || buttons == Buttons::OkCancel;
    case Answer::Cancel:
        return buttons != Buttons::Ok && buttons != Buttons::YesNo && buttons != Buttons::YesNoAll;
    case Answer::Retry:
        return buttons == Buttons::RetryCancel;
    case Answer::Yes:
    case Answer::No:
        return buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel || buttons == Buttons::YesNoAll;
    case Answer::YesToAll:
    case Answer::NoToAll:
        return buttons == Buttons::YesNoAll;
    case Answer::None:
        break;
    }
    return false;
}

const QString seekSupport =
    QStringLiteral("A number of errors have been detected, please seek technical support.");

/// Without the advice below it, which depends on the engine and has a test of its own.
QString Told(const QString &text)
{
    return text.startsWith(seekSupport) ? seekSupport : text;
}
} // namespace

ScriptedDialogs::ScriptedDialogs()
    : m_outer(Dialogs::Installed())
{
    Dialogs::Hooks &hooks = Dialogs::Installed();
    hooks.msgBox = [this](const QString &text, const QString &title, Dialogs::Buttons buttons, Dialogs::Icon,
                          Dialogs::Answer defaultAnswer) {
        if (title == u"Confirm Deletion" && defaultAnswer != Dialogs::Answer::No)
            Fail(u"Enter deletes: " % text);
        const bool expected = !m_boxes.empty();
        const Dialogs::Answer answer = OnBox(text, title);
        if (expected && !Offers(buttons, answer))
            Fail(u"The box has no such button: [" % title % u"] " % text);
        return answer;
    };
    hooks.openFile = [this](const Dialogs::FileQuestion &question) { return OnFile(question.title); };
    hooks.saveFile = hooks.openFile;
    hooks.settleChanges = [this](const QString &what, QList<Dialogs::FieldChange> &changes) {
        return OnChanges(what, changes);
    };
}

ScriptedDialogs::~ScriptedDialogs()
{
    Dialogs::Installed() = m_outer;
    for (const Box &box : m_boxes)
        Fail(u"Box never came: [" % box.title % u"] " % box.text);
    for (const File &file : m_files)
        Fail(u"File chooser never came: " % file.title);
    for (const Changes &changes : m_changes)
        Fail(u"Changes never came: " % changes.changes.join(u" | "));
}

void ScriptedDialogs::Expect(const QString &title, const QString &text, Dialogs::Answer answer)
{
    m_boxes.push_back({title, text, answer});
}

void ScriptedDialogs::ExpectFailure()
{
    gConnection.OpenRecordset("SELECT * FROM NoSuchTable");
    Expect(gConnection.Errors().first().source, seekSupport);
}

void ScriptedDialogs::ExpectFile(const QString &title, const QString &file)
{
    m_files.push_back({title, file});
}

void ScriptedDialogs::ExpectChanges(const QString &what, const QStringList &changes,
                                    const std::optional<QStringList> &theirs)
{
    m_changes.push_back({what, changes, theirs});
}

bool ScriptedDialogs::OnChanges(const QString &what, QList<Dialogs::FieldChange> &changes)
{
    QStringList came;
    for (const Dialogs::FieldChange &change : changes)
        came.append(change.field % u": " % change.yours % u" / " % change.theirs);
    const Changes expected = m_changes.empty() ? Changes{} : m_changes.front();
    if (!m_changes.empty())
        m_changes.pop_front();
    if (expected.what != what || expected.changes != came)
        Fail(u"Expected changes of " % expected.what % u": " % expected.changes.join(u" | ") %
             u"\n   but came of " % what % u": " % came.join(u" | "));
    for (Dialogs::FieldChange &change : changes)
        change.takesTheirs = expected.theirs && expected.theirs->contains(change.field);
    return expected.theirs.has_value();
}

Dialogs::Answer ScriptedDialogs::OnBox(const QString &text, const QString &title)
{
    if (m_boxes.empty()) {
        Fail(u"Unexpected box: [" % title % u"] " % text);
        return Dialogs::Answer::Cancel;
    }
    const Box expected = m_boxes.front();
    m_boxes.pop_front();
    if (expected.title != title || expected.text != Told(text))
        Fail(u"Expected box: [" % expected.title % u"] " % expected.text % u"\n   but came: [" % title %
             u"] " % text);
    return expected.answer;
}

QString ScriptedDialogs::OnFile(const QString &title)
{
    if (m_files.empty()) {
        Fail(u"Unexpected file chooser: " % title);
        return {};
    }
    const File expected = m_files.front();
    m_files.pop_front();
    if (expected.title != title)
        Fail(u"Expected file chooser: " % expected.title % u"\n   but came: " % title);
    return expected.file;
}
