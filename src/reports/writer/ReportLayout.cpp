#include "reports/writer/ReportLayout.h"

#include "platform/sql/Windows1252.h"
#include "reports/writer/ReportMarkup.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QUrl>

#include <cmath>

namespace
{
constexpr int bytesKept = 40'000'000;
constexpr int bytesOfLetter = 50; ///< about what the layout of a text takes, and of one with tags
constexpr int bytesOfPlain = 2'000;
constexpr int bytesOfRich = 50'000;
constexpr qreal pixelsPerPoint = 96.0 / 72;

QFont FontOf(const ReportText &text, qreal unit)
{
    QFont font(QStringLiteral("Verdana"));
    // At the page's resolution this does no more than round.
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setPixelSize(std::max(1, qRound(text.points * pixelsPerPoint * unit)));
    font.setBold(text.isBold);
    return font;
}

QTextOption OptionOf(int align)
{
    constexpr Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, Qt::AlignJustify,
                                            Qt::AlignLeft};
    QTextOption option(alignments[align]);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

QTextLayout::FormatRange Format(const ReportMarkup::Link &link)
{
    QTextLayout::FormatRange range;
    range.start = static_cast<int>(link.from);
    range.length = static_cast<int>(link.length);
    range.format.setAnchor(true);
    range.format.setAnchorHref(link.target);
    range.format.setForeground(QGuiApplication::palette().link());
    range.format.setFontUnderline(true);
    return range;
}

class PlainText final : public LaidText
{
public:
    PlainText(const ReportMarkup &markup, const QFont &font, int align, qreal width)
        : m_layout(markup.text, font)
    {
        m_layout.setTextOption(OptionOf(align));
        QList<QTextLayout::FormatRange> links;
        for (const ReportMarkup::Link &link : markup.links)
            links.append(Format(link));
        if (!links.isEmpty())
            m_layout.setFormats(links);
        m_layout.setCacheEnabled(true);
        m_layout.beginLayout();
        for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
            line.setLineWidth(width);
            line.setPosition({0, m_height});
            m_height += std::ceil(line.height());
        }
        m_layout.endLayout();
    }

    qreal Height() const override { return m_height; }
    std::vector<Line> Lines() const override
    {
        std::vector<Line> lines;
        for (int i = 0; i < m_layout.lineCount(); ++i) {
            const QTextLine line = m_layout.lineAt(i);
            lines.push_back({line.y(), line.y() + std::ceil(line.height())});
        }
        return lines;
    }
    void Draw(QPainter &painter, const QPointF &at, qreal from, qreal to) const override
    {
        for (int i = 0; i < m_layout.lineCount(); ++i) {
            const QTextLine line = m_layout.lineAt(i);
            if (line.y() < to && line.y() + line.height() > from)
                line.draw(&painter, at);
        }
    }

private:
    QTextLayout m_layout;
    qreal m_height = 0;
};

/// A text with tags of its own: a letterhead, or a field in which somebody typed HTML.
class RichText final : public LaidText
{
public:
    RichText(const ReportText &text, const QString &folder, qreal unit, qreal width)
        : m_unit(unit)
        , m_screen(1, 1, QImage::Format_Mono)
    {
        constexpr int dotsPerMetre = 3780; // 96 per inch
        m_screen.setDotsPerMeterX(dotsPerMetre);
        m_screen.setDotsPerMeterY(dotsPerMetre);
        m_document.setUndoRedoEnabled(false);
        m_document.setDocumentMargin(0);
        m_document.setDefaultFont(FontOf(text, 1));
        m_document.setDefaultStyleSheet(QStringLiteral("p.MsoNormal { margin: 0px; }"));
        m_document.setDefaultTextOption(OptionOf(text.align));
        m_document.setBaseUrl(QUrl::fromLocalFile(folder + u'/'));
        m_document.documentLayout()->setPaintDevice(&m_screen);
        m_document.setHtml(FromWindows1252(text.html.data(), text.html.size()));
        m_document.setTextWidth(width / unit);
        if (const qreal needed = m_document.size().width(); needed > width / unit)
            m_unit = width / needed;
    }

    qreal Height() const override { return m_document.size().height() * m_unit; }
    std::vector<Line> Lines() const override
    {
        std::vector<Line> lines;
        for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
            const qreal top = m_document.documentLayout()->blockBoundingRect(block).top();
            for (int i = 0; i < block.layout()->lineCount(); ++i) {
                const QRectF line = block.layout()->lineAt(i).rect().translated(0, top);
                lines.push_back({line.top() * m_unit, line.bottom() * m_unit});
            }
        }
        return lines;
    }
    void Draw(QPainter &painter, const QPointF &at, qreal from, qreal to) const override
    {
        painter.save();
        painter.translate(at);
        painter.scale(m_unit, m_unit);
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette = QPalette(Qt::black, Qt::white);
        context.clip =
            QRectF(0, from / m_unit, m_document.size().width(), (std::min(to, Height()) - from) / m_unit);
        painter.setClipRect(context.clip);
        m_document.documentLayout()->draw(&painter, context);
        painter.restore();
    }

private:
    qreal m_unit;
    QImage m_screen;
    QTextDocument m_document;
};
} // namespace

ReportLayout::ReportLayout(qreal unit, QString folder)
    : m_unit(unit)
    , m_folder(std::move(folder))
    , m_laid(bytesKept)
{
}

std::shared_ptr<const LaidText> ReportLayout::Lay(const ReportText &text, qreal width)
{
    QByteArray key;
    key.append(static_cast<char>(text.points * 2)).append(text.isBold ? 'b' : 'p');
    key.append(static_cast<char>('0' + text.align)).append(QByteArray::number(qRound(width))).append(':');
    key.append(text.html);
    if (const auto *kept = m_laid.object(key))
        return *kept;
    std::shared_ptr<const LaidText> laid;
    qsizetype bytes = key.size() * bytesOfLetter;
    if (const auto markup = ReadReportMarkup(text.html)) {
        laid = std::make_shared<PlainText>(*markup, FontOf(text, m_unit), text.align, width);
        bytes += bytesOfPlain;
    } else {
        laid = std::make_shared<RichText>(text, m_folder, m_unit, width);
        bytes += bytesOfRich;
    }
    m_laid.insert(key, new std::shared_ptr<const LaidText>(laid), bytes);
    return laid;
}
