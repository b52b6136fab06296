#pragma once

#include "reports/writer/ReportReader.h"

#include <QCache>
#include <QString>

#include <memory>
#include <vector>

class QPainter;
class QPointF;

/// A text laid out in a width. Positions and heights are in the units of the page.
class LaidText
{
public:
    struct Line {
        qreal top = 0;
        qreal bottom = 0;
    };

    LaidText() = default;
    virtual ~LaidText() = default;
    LaidText(const LaidText &) = delete;
    LaidText &operator=(const LaidText &) = delete;

    virtual qreal Height() const = 0;
    virtual std::vector<Line> Lines() const = 0;
    /// Draws the text with its top at `at`; of a long one only what is between `from` and `to`.
    virtual void Draw(QPainter &painter, const QPointF &at, qreal from, qreal to) const = 0;
};

/// Lays out the texts of a report. A text that was laid out before is taken from memory: a report repeats its
/// labels, and the places and courses of people, thousands of times.
class ReportLayout final
{
public:
    /// `unit` is the length of a pixel of the report on the page; pictures are looked for in `folder`.
    ReportLayout(qreal unit, QString folder);

    qreal Unit() const { return m_unit; }
    std::shared_ptr<const LaidText> Lay(const ReportText &text, qreal width);

private:
    qreal m_unit;
    QString m_folder;
    QCache<QByteArray, std::shared_ptr<const LaidText>> m_laid;
};
