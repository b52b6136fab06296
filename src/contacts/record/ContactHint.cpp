#include "contacts/record/ContactHint.h"

#include "contacts/record/ContactModule.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace
{
constexpr int typingPause = 400; // milliseconds
constexpr int named = 3;
} // namespace

ContactHint::ContactHint(const Fields &fields, QWidget *parent)
    : QWidget(parent)
    , m_fields(fields)
    , m_line(new QLabel(this))
    , m_viewBtn(new QPushButton(QStringLiteral("&View Contact(s)"), this))
{
    m_line->setObjectName(QStringLiteral("SimilarLine"));
    m_line->setTextFormat(Qt::PlainText);
    m_line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_viewBtn->setObjectName(QStringLiteral("SimilarBtn"));
    m_viewBtn->setAutoDefault(false);
    // Its mnemonic opens it; Tab goes on from field to field as if it were not there.
    m_viewBtn->setFocusPolicy(Qt::NoFocus);
    // The fields above must not move when it comes and goes.
    QSizePolicy stays = m_viewBtn->sizePolicy();
    stays.setRetainSizeWhenHidden(true);
    m_viewBtn->setSizePolicy(stays);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(m_line, 1);
    row->addWidget(m_viewBtn);

    m_pause.setSingleShot(true);
    m_pause.setInterval(typingPause);
    connect(&m_pause, &QTimer::timeout, this, &ContactHint::Look);
    connect(m_viewBtn, &QPushButton::clicked, this, [this] { emit Opened(m_keys); });
    for (const QLineEdit *field : {fields.forename, fields.surname, fields.email})
        connect(field, &QLineEdit::textChanged, &m_pause, qOverload<>(&QTimer::start));
}

void ContactHint::Watch(bool on)
{
    setVisible(on);
    if (on)
        m_pause.start();
}

void ContactHint::Look()
{
    m_keys.clear();
    m_text.clear();
    if (isHidden()) {
        ShowText();
        return;
    }
    const std::vector<ListItem> people =
        Contact_FindSimilar(m_fields.forename->text(), m_fields.surname->text(), m_fields.email->text());
    for (const ListItem &person : people) {
        m_keys.append(person.key);
        if (m_keys.size() > named)
            continue;
        const QString address = person.subItems.value(0);
        m_text += (m_text.isEmpty() ? QStringLiteral("On file already: ") : QStringLiteral("; ")) %
                  person.text % (address.isEmpty() ? QString() : QString(u" (" % address % u')'));
    }
    if (m_keys.size() > named)
        m_text += QStringLiteral("; and more");
    ShowText();
}

void ContactHint::ShowText()
{
    m_line->setText(m_line->fontMetrics().elidedText(m_text, Qt::ElideRight, m_line->width()));
    m_line->setToolTip(m_text);
    m_viewBtn->setVisible(!m_keys.isEmpty());
}

void ContactHint::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    ShowText();
}
