#include "reports/writer/ReportMarkup.h"

#include "platform/sql/Windows1252.h"

#include <array>

namespace
{
constexpr QChar noBreakSpace(0xa0);

class MarkupReader final
{
public:
    explicit MarkupReader(const QString &html)
        : m_html(html)
    {
        m_markup.text.reserve(html.size());
    }

    std::optional<ReportMarkup> Read()
    {
        while (m_at < m_html.size()) {
            const QChar c = m_html[m_at];
            const bool isRead = c == u'<' ? TakeTag() : c == u'&' ? TakeCharacter() : TakeLetter(c);
            if (!isRead)
                return std::nullopt;
        }
        if (m_inLink)
            return std::nullopt;
        return std::move(m_markup);
    }

private:
    void Put(QStringView text)
    {
        if (m_isSpaceDue && !m_markup.text.isEmpty() && !m_markup.text.endsWith(QChar::LineSeparator))
            m_markup.text += u' ';
        m_isSpaceDue = false;
        m_markup.text += text;
    }

    /// White space of any length is one space, and none at the ends of a line.
    bool TakeLetter(QChar c)
    {
        ++m_at;
        if (c == u' ' || c == u'\t' || c == u'\n' || c == u'\r')
            m_isSpaceDue = true;
        else
            Put({&c, 1});
        return true;
    }

    bool Take(QStringView word)
    {
        if (!QStringView(m_html).sliced(m_at).startsWith(word, Qt::CaseInsensitive))
            return false;
        m_at += word.size();
        return true;
    }

    bool TakeTag()
    {
        if (Take(u"<br>")) {
            m_isSpaceDue = false;
            m_markup.text += QChar(QChar::LineSeparator);
            return true;
        }
        if (m_inLink && Take(u"</a>")) {
            m_inLink = false;
            ReportMarkup::Link &link = m_markup.links.back();
            link.length = m_markup.text.size() - link.from;
            return true;
        }
        if (!m_inLink && Take(u"<a href=\""))
            return TakeLink();
        const QChar next = m_html.size() > m_at + 1 ? m_html[m_at + 1] : QChar(u' ');
        const bool isTag = next.isLetter() || next == u'/' || next == u'!' || next == u'?';
        return !isTag && TakeLetter(u'<');
    }

    bool TakeLink()
    {
        const qsizetype end = m_html.indexOf(u"\">", m_at);
        if (end < 0)
            return false;
        Put({});
        m_markup.links.push_back({m_markup.text.size(), 0, m_html.mid(m_at, end - m_at)});
        m_at = end + 2;
        m_inLink = true;
        return true;
    }

    bool TakeCharacter()
    {
        if (Take(u"&#"))
            return TakeNumber();
        struct Entity {
            QStringView word;
            QChar c;
        };
        static constexpr std::array<Entity, 5> entities = {{{u"&nbsp;", noBreakSpace},
                                                            {u"&amp;", u'&'},
                                                            {u"&lt;", u'<'},
                                                            {u"&gt;", u'>'},
                                                            {u"&quot;", u'"'}}};
        for (const Entity &entity : entities) {
            if (Take(entity.word)) {
                Put({&entity.c, 1});
                return true;
            }
        }
        return !IsEntity() && TakeLetter(u'&');
    }

    /// Whether a name with a semicolon follows: "R&D" is no entity.
    bool IsEntity() const
    {
        qsizetype end = m_at + 1;
        while (end < m_html.size() && m_html[end].isLetterOrNumber())
            ++end;
        return end > m_at + 1 && end < m_html.size() && m_html[end] == u';';
    }

    bool TakeNumber()
    {
        const qsizetype end = m_html.indexOf(u';', m_at);
        bool isNumber = false;
        const uint code = end < 0 ? 0 : QStringView(m_html).sliced(m_at, end - m_at).toUInt(&isNumber);
        if (!isNumber || code < ' ' || code > QChar::LastValidCodePoint || QChar::isSurrogate(code))
            return false;
        Put(QChar::fromUcs4(code));
        m_at = end + 1;
        return true;
    }

    QString m_html;
    ReportMarkup m_markup;
    qsizetype m_at = 0;
    bool m_isSpaceDue = false;
    bool m_inLink = false;
};
} // namespace

std::optional<ReportMarkup> ReadReportMarkup(QByteArrayView html)
{
    return MarkupReader(FromWindows1252(html.data(), html.size())).Read();
}
