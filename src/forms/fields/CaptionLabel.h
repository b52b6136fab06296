#pragma once

#include <QLabel>

/// The caption of a field. A caption whose field is required and empty is drawn on a plate of gWarnColour
/// with a text that stands out on it: the colour is the user's own and may be anything, white included.
class CaptionLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit CaptionLabel(const QString &caption, QWidget *parent = nullptr);

    bool IsMissing() const { return m_missing; }
    void SetMissing(bool missing);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_missing = false;
};
