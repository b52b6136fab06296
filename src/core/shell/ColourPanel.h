#pragma once

#include <QAbstractButton>

/// A panel filled with a colour; a click lets the user choose another.
class ColourPanel final : public QAbstractButton
{
    Q_OBJECT

public:
    explicit ColourPanel(QWidget *parent = nullptr);

    int Colour() const { return m_colour; } ///< 0xRRGGBB
    void SetColour(int colour);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void Choose();
    int m_colour = 0;
};
