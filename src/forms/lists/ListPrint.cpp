#include "forms/lists/ListPrint.h"

#include "controls/ListModel.h"
#include "forms/lists/ListView.h"
#include "forms/lists/PrintChooser.h"
#include "forms/progress/ProgressBox.h"
#include "platform/desktop/Dialogs.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrinter>
#include <QShortcut>

#include <algorithm>
#include <numeric>

namespace
{
constexpr int pointSize = 9;

class Pages final
{
public:
    Pages(const ListModel &list, const std::vector<int> &rows, const QString &title,
          QPagedPaintDevice &device)
        : m_list(list)
        , m_title(title)
        , m_device(device)
    {
        // The pages show the list as it is now, whatever happens to it while the window serves events.
        for (const int row : rows)
            m_rows.push_back(list.At(row));
    }

    bool Print(const ListPrint::EachPage &eachPage)
    {
        if (!m_painter.begin(&m_device))
            return false;
        QFont font = m_painter.font();
        font.setPointSize(pointSize);
        m_painter.setFont(font);
        m_lineHeight = m_painter.fontMetrics().lineSpacing();
        // Five lines go to the title, the rule below it, the column titles, and the page number below another
        // rule.
        const int linesOnPage = qMax(1, Paper().height() / m_lineHeight - 5);
        m_count = qMax(1, (static_cast<int>(m_rows.size()) + linesOnPage - 1) / linesOnPage);
        MeasureColumns();
        for (int page = 0; page < m_count; ++page) {
            if ((eachPage && !eachPage(page, m_count)) || (page > 0 && !m_device.newPage()))
                return false;
            PrintPage(page, linesOnPage);
        }
        return m_painter.end();
    }

private:
    /// The area that can be printed on, in the painter's coordinates.
    QRect Paper() const { return m_painter.viewport(); }
    static QString Cell(const ListItem &row, int column)
    {
        return column == 0 ? row.text : row.subItems.value(column - 1);
    }

    QString Title(int column) const
    {
        return m_list.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    }

    void SetBold(bool bold);
    void MeasureColumns();
    void PrintPage(int page, int linesOnPage);
    void PrintLine(int line, const std::function<QString(int column)> &text);

    const ListModel &m_list;
    std::vector<ListItem> m_rows;
    QString m_title;
    QPagedPaintDevice &m_device;
    QPainter m_painter;
    int m_lineHeight = 0;
    int m_count = 0;
    std::vector<int> m_widths;
};

void Pages::SetBold(bool bold)
{
    QFont font = m_painter.font();
    font.setBold(bold);
    m_painter.setFont(font);
}

/// Columns share the paper according to their contents; of a very long list, a thousand rows are enough to
/// tell.
void Pages::MeasureColumns()
{
    SetBold(true);
    for (int column = 0; column < m_list.columnCount(); ++column)
        m_widths.push_back(m_painter.fontMetrics().horizontalAdvance(Title(column)));
    SetBold(false);
    const QFontMetrics metrics = m_painter.fontMetrics();
    const size_t step = m_rows.size() / 1000 + 1;
    const int gap = metrics.averageCharWidth() * 2;
    for (int column = 0; column < m_list.columnCount(); ++column) {
        int &width = m_widths[static_cast<size_t>(column)];
        for (size_t i = 0; i < m_rows.size(); i += step)
            width = qMax(width, metrics.horizontalAdvance(Cell(m_rows[i], column)));
        width += gap;
    }
    // Narrow columns get what they need; one very long text must not squeeze them.
    std::vector<int *> narrowFirst;
    for (int &width : m_widths)
        narrowFirst.push_back(&width);
    std::sort(narrowFirst.begin(), narrowFirst.end(), [](int *a, int *b) { return *a < *b; });
    int room = Paper().width();
    for (size_t i = 0; i < narrowFirst.size(); ++i) {
        *narrowFirst[i] = qMin(*narrowFirst[i], room / static_cast<int>(narrowFirst.size() - i));
        room -= *narrowFirst[i];
    }
}

void Pages::PrintLine(int line, const std::function<QString(int column)> &text)
{
    const QFontMetrics metrics = m_painter.fontMetrics();
    int left = 0;
    for (int column = 0; column < m_list.columnCount(); ++column) {
        const int width = m_widths[static_cast<size_t>(column)];
        const int room = width - metrics.averageCharWidth();
        m_painter.drawText(QRect(left, line * m_lineHeight, room, m_lineHeight), Qt::AlignLeft,
                           metrics.elidedText(text(column), Qt::ElideRight, room));
        left += width;
    }
}

void Pages::PrintPage(int page, int linesOnPage)
{
    SetBold(true);
    m_painter.drawText(QRect(0, 0, Paper().width(), m_lineHeight), Qt::AlignLeft, m_title);
    PrintLine(2, [this](int column) { return Title(column); });
    SetBold(false);
    m_painter.drawLine(0, 3 * m_lineHeight, Paper().width(), 3 * m_lineHeight);
    const size_t first = static_cast<size_t>(page) * static_cast<size_t>(linesOnPage);
    const size_t end = qMin(m_rows.size(), first + static_cast<size_t>(linesOnPage));
    for (size_t i = first; i < end; ++i)
        PrintLine(3 + static_cast<int>(i - first), [&](int column) { return Cell(m_rows[i], column); });
    m_painter.drawText(QRect(0, Paper().height() - m_lineHeight, Paper().width(), m_lineHeight),
                       Qt::AlignRight,
                       u"Page " % QString::number(page + 1) % u" of " % QString::number(m_count));
}
} // namespace

bool ListPrint::Print(const ListModel &list, const std::vector<int> &rows, const QString &title,
                      QPagedPaintDevice &device, const EachPage &eachPage)
{
    return Pages(list, rows, title, device).Print(eachPage);
}

void ListPrint::Ask(const ListModel &list, ListView *view)
{
    if (list.IsEmpty())
        return;
    const QString title = view->window()->windowTitle();
    QPrinter printer;
    printer.setDocName(title);
    const std::vector<int> selected = list.SelectedRows();
    if (!ChoosePrinter(printer, selected.size() > 1, view))
        return;
    std::vector<int> rows(static_cast<size_t>(list.Count()));
    std::iota(rows.begin(), rows.end(), 0);
    if (printer.printRange() == QPrinter::Selection)
        rows = selected;

    bool printed = false;
    const bool finished =
        ProgressBox::Run(view->window(), QStringLiteral("Printing"), [&](Progress &progress) {
            printed = Print(list, rows, title, printer, std::ref(progress));
        });
    if (!finished)
        printer.abort();
    else if (!printed)
        Dialogs::MsgBox(u"The list '" % title % u"' was not printed: " % WhyNotPrinted(printer), title,
                        Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
}

void ListPrint::BindKey(QWidget *form)
{
    auto *key = new QShortcut(QKeySequence::Print, form);
    key->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(key, &QShortcut::activated, form, [form] {
        auto *list = qobject_cast<ListView *>(form->focusWidget());
        for (ListView *other : form->findChildren<ListView *>()) {
            if (!list && other->isVisible() && !other->Model().IsEmpty())
                list = other;
        }
        if (list)
            list->Print();
    });
}
