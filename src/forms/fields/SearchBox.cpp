#include "forms/fields/SearchBox.h"

#include "controls/ListModel.h"
#include "forms/fields/FieldNote.h"
#include "forms/lists/ListView.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>

#include <algorithm>

namespace
{
/// Upper-casing may lengthen a text and never shortens it.
bool Begins(QStringView text, const QString &wanted)
{
    return text.left(wanted.size()).toString().toUpper().startsWith(wanted);
}

/// The name of "[reference] name"; empty if there is no reference in front.
QStringView NameAfterLabel(QStringView text)
{
    const qsizetype close = text.startsWith(u'[') ? text.indexOf(u']') : -1;
    return close < 0 ? QStringView() : text.mid(close + 1).trimmed();
}

class SearchBox final : public QObject
{
public:
    SearchBox(QLineEdit *box, ListView *list, const std::function<void()> &enter)
        : QObject(list)
        , m_box(box)
        , m_list(list)
        , m_note(new FieldNote(box))
    {
        connect(box, &QLineEdit::textChanged, this, &SearchBox::Search);
        connect(&list->Model(), &QAbstractItemModel::modelReset, this, [this] { m_note->Show({}); });
        connect(box, &QLineEdit::returnPressed, this, [this, enter] {
            if (m_note->Text().isEmpty() && m_list->Model().Selection()->hasSelection())
                enter();
        });
        auto *find = new QShortcut(QKeySequence::Find, box->parentWidget());
        find->setContext(Qt::WidgetWithChildrenShortcut);
        connect(find, &QShortcut::activated, this, [this] {
            m_box->setFocus(Qt::ShortcutFocusReason);
            m_box->selectAll();
        });
        box->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_box && event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent *>(event)->key() == Qt::Key_Down) {
            GoToList();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void Search(const QString &entry)
    {
        if (entry.size() < 2) {
            m_note->Show({});
            return;
        }
        const int row = RowOf(entry.toUpper());
        m_note->Show(row < 0 ? QStringLiteral("no match") : QString(), FieldNote::Tone::Warning);
        if (row < 0)
            return;
        m_list->Model().SelectOnly(row);
        m_list->ShowRow(row);
    }

    int RowOf(const QString &wanted) const
    {
        const ListModel &rows = m_list->Model();
        const int count = rows.Count();
        const int start = std::max(0, rows.CurrentRow());
        for (int step = 0; step < count; ++step) {
            const int row = (start + step) % count;
            const QString &text = rows.At(row).text;
            if (Begins(text, wanted) || Begins(NameAfterLabel(text), wanted))
                return row;
        }
        return -1;
    }

    void GoToList()
    {
        ListModel &rows = m_list->Model();
        if (!rows.Selection()->hasSelection() && !rows.IsEmpty())
            rows.SelectOnly(std::max(0, rows.CurrentRow()));
        m_list->setFocus(Qt::OtherFocusReason);
    }

    QLineEdit *m_box;
    ListView *m_list;
    FieldNote *m_note;
};
} // namespace

void BindSearchBox(QLineEdit *box, ListView *list, const std::function<void()> &enter)
{
    new SearchBox(box, list, enter);
}
