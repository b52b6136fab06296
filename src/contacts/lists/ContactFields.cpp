#include "contacts/lists/ContactFields.h"

#include "controls/ComboModel.h"
#include "core/files/File_Tools.h"
#include "core/icons/Icons.h"
#include "database/statements/Security.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Shell.h"

#include <QGridLayout>

namespace
{
QPushButton *OpenButton(FormBuilder &form, const QString &name, const QString &icon, const QString &deed)
{
    form.Beside();
    QPushButton *button = form.Button(name, QString());
    button->setIcon(Icons::Of(icon));
    button->setToolTip(deed);
    button->setAccessibleName(deed);
    return button;
}
} // namespace

void ContactFields::AddressLines(FormBuilder &form, const QString &name, bool readOnly,
                                 QLineEdit *(&lines)[4])
{
    for (int i = 0; i < 4; ++i) {
        const QString number = QString::number(i + 1);
        const QString caption = i > 0      ? QString()
                                : readOnly ? QStringLiteral("Address:")
                                           : QStringLiteral("A&ddress:");
        lines[i] = readOnly ? form.ReadOnly(name % number, caption) : form.Text(name % number, caption);
        lines[i]->setAccessibleName(u"Address line " % number);
    }
}

QPushButton *ContactFields::MailButton(FormBuilder &form, const QString &name, QLineEdit *address)
{
    QPushButton *button =
        OpenButton(form, name, QStringLiteral("mail-message-new"), QStringLiteral("Write an e-mail"));
    QObject::connect(button, &QPushButton::clicked, address, [address] {
        const QString target = u"mailto:" % address->text();
        if (!address->text().isEmpty() && Shell::Open(target) <= Shell::Result::NoAssociation)
            Dialogs::MsgBox(QStringLiteral("No program for e-mail is set on this computer."),
                            u"Error running " % target, Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
    });
    return button;
}

QPushButton *ContactFields::WebButton(FormBuilder &form, const QString &name, QLineEdit *address)
{
    QPushButton *button = OpenButton(form, name, QStringLiteral("globe"), QStringLiteral("Open the website"));
    QObject::connect(button, &QPushButton::clicked, address, [address] {
        const QString url = address->text().trimmed();
        if (!url.isEmpty())
            OpenDocument(Shell::IsWebAddress(url) ? url : QString(u"http://" % url));
    });
    return button;
}

void ContactFields::Show(QLineEdit *field, const QString &text)
{
    field->setText(text);
    field->setCursorPosition(0);
}

void ContactFields::FitChars(QLineEdit *field, int chars)
{
    field->setMinimumWidth((chars + 2) * field->fontMetrics().averageCharWidth());
}

void ContactFields::AlignCaptions(const QList<QGroupBox *> &groups)
{
    int first = 0;
    for (QGroupBox *group : groups) {
        for (const CaptionLabel *label : group->findChildren<CaptionLabel *>()) {
            if (group->layout()->indexOf(label) >= 0)
                first = qMax(first, label->sizeHint().width());
        }
    }
    for (QGroupBox *group : groups)
        qobject_cast<QGridLayout *>(group->layout())->setColumnMinimumWidth(0, first);
}

void ContactFields::ChooseStored(ContactSection code, ComboModel &list, int reference)
{
    if (reference > 1 && list.FindData(reference) < 0)
        Contact_FillList(code, list, true);
    list.ChooseData(reference);
}

int ContactFields::ChosenToStore(ContactSection code, TypedCombo *list)
{
    list->Leave();
    return Contact_CheckChosen(code, list->Model()) ? qMax(1, list->Model().CurrentData()) : 1;
}

void ContactFields::TakeTyped(TypedCombo *list, ContactSection code)
{
    list->AllowTyping(UserMay(ContactSectionOf(code).right, Level::Edit));
    list->SetNewTextHandler(
        [list, code](const QString &typed) { Contact_TakeTyped(code, list->Model(), typed); },
        ContactSectionOf(code).word);
}
