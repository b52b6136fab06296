#pragma once

#include <QLabel>

/// The caption of a field. The caption of a required field that is empty is drawn on a plate of gWarnColour,
/// with a text colour that contrasts with it, since users may choose any colour. White, which it is until
/// they choose, would be a block that shouts in the dark and says nothing in the light: then it gets an
/// outline.
class CaptionLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit CaptionLabel(const QString &caption, QWidget *parent = nullptr);

    /// The caption as it is named in a sentence: "Date of birth" for "Date of &birth:".
    QString Name() const;
    bool IsMissing() const { return m_missing; }
    void SetMissing(bool missing);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_missing = false;
};

/// "Date of birth: ", from the caption of the field, for a message about it; "" if it has none.
QString CaptionBefore(const QWidget &field);
