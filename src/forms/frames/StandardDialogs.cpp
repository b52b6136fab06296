#include "forms/frames/StandardDialogs.h"

#include "core/icons/Icons.h"
#include "forms/frames/AskingWindow.h"
#include "forms/frames/WindowPlace.h"
#include "forms/frames/frmConflict.h"
#include "platform/connection/Painting.h"
#include "platform/desktop/Dialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QShowEvent>
#include <QStyle>

namespace
{
using Dialogs::Answer;
using Dialogs::Buttons;

QMessageBox::StandardButtons ButtonsOf(Buttons buttons)
{
    switch (buttons) {
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::YesNoAll:
        return QMessageBox::Yes | QMessageBox::YesToAll | QMessageBox::No | QMessageBox::NoToAll;
    case Buttons::RetryCancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton ButtonOf(Answer answer)
{
    switch (answer) {
    case Answer::Ok:
        return QMessageBox::Ok;
    case Answer::Cancel:
        return QMessageBox::Cancel;
    case Answer::Retry:
        return QMessageBox::Retry;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        return QMessageBox::No;
    case Answer::YesToAll:
        return QMessageBox::YesToAll;
    case Answer::NoToAll:
        return QMessageBox::NoToAll;
    case Answer::None:
        break;
    }
    return QMessageBox::NoButton;
}

Answer AnswerOf(int button)
{
    for (const Answer answer : {Answer::Ok, Answer::Cancel, Answer::Retry, Answer::Yes, Answer::No,
                                Answer::YesToAll, Answer::NoToAll}) {
        if (ButtonOf(answer) == button)
            return answer;
    }
    return Answer::Cancel;
}

Answer FirstAnswer(Buttons buttons)
{
    switch (buttons) {
    case Buttons::YesNo:
    case Buttons::YesNoCancel:
    case Buttons::YesNoAll:
        return Answer::Yes;
    case Buttons::RetryCancel:
        return Answer::Retry;
    case Buttons::Ok:
    case Buttons::OkCancel:
        break;
    }
    return Answer::Ok;
}

QMessageBox::Icon IconOf(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Information:
        return QMessageBox::Information;
    case Dialogs::Icon::Question:
        return QMessageBox::Question;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::Stop:
        return QMessageBox::Critical;
    case Dialogs::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

/// Each box has one of the program's own pictures beside its text.
QString PictureOf(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Information:
        return QStringLiteral("dialog-information");
    case Dialogs::Icon::Question:
        return QStringLiteral("dialog-question");
    case Dialogs::Icon::Exclamation:
        return QStringLiteral("dialog-warning");
    case Dialogs::Icon::Stop:
        return QStringLiteral("dialog-error");
    case Dialogs::Icon::None:
        break;
    }
    return {};
}

/// Makes a box wide enough for its title; by itself it is as wide as its text, which is often shorter.
void ShowWholeTitle(QMessageBox &box)
{
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    if (!grid)
        return;
    const QFontMetrics metrics = box.fontMetrics();
    const int titleButtons = metrics.averageCharWidth() * 16;
    grid->addItem(new QSpacerItem(metrics.horizontalAdvance(box.windowTitle()) + titleButtons, 0),
                  grid->rowCount(), 0, 1, grid->columnCount());
}

/// A message box over the form that asks, and not over the middle of the main window around it.
class MessageBox final : public QMessageBox
{
public:
    using QMessageBox::QMessageBox;

protected:
    void showEvent(QShowEvent *event) override
    {
        QMessageBox::showEvent(event); // finds its size
        const QWidget *asker = parentWidget();
        if (asker && !event->spontaneous())
            move(PlaceOver(asker->focusWidget() ? asker->focusWidget() : asker, size()));
    }
};

Answer ShowMsgBox(const QString &text, const QString &title, Buttons buttons, Dialogs::Icon icon,
                  Answer defaultAnswer)
{
    QWidget *asker = AskingWindow();
    MessageBox box(IconOf(icon), title.isEmpty() ? QApplication::applicationDisplayName() : title, text,
                   ButtonsOf(buttons), asker);
    if (const QString name = PictureOf(icon); !name.isEmpty()) {
        const int side = box.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &box);
        box.setIconPixmap(Icons::Of(name).pixmap(QSize(side, side), box.devicePixelRatio()));
    }
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(ButtonOf(defaultAnswer == Answer::None ? FirstAnswer(buttons) : defaultAnswer));
    if (buttons == Buttons::YesNoAll)
        box.setEscapeButton(QMessageBox::No);
    ShowWholeTitle(box);
    const Answer answer = AnswerOf(box.exec());
    // Between two questions, some desktops lose track of the window that asks.
    if (asker)
        asker->activateWindow();
    return answer;
}

QString ChooseFile(const Dialogs::FileQuestion &question, QFileDialog::AcceptMode mode)
{
    const QString folder =
        question.folder.isEmpty() || QDir(question.folder).exists() ? question.folder : QDir::homePath();
    QFileDialog chooser(AskingWindow(), question.title, folder, question.filter);
    chooser.setAcceptMode(mode);
    chooser.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    chooser.setDefaultSuffix(question.defaultExtension);
    if (!question.fileName.isEmpty())
        chooser.selectFile(question.fileName);
    return chooser.exec() == QDialog::Accepted ? QDir::toNativeSeparators(chooser.selectedFiles().value(0))
                                               : QString();
}

std::optional<int> AskColour(int colour)
{
    const QColor chosen = QColorDialog::getColor(QColor::fromRgb(static_cast<QRgb>(colour)), AskingWindow());
    if (!chosen.isValid())
        return std::nullopt;
    return static_cast<int>(chosen.rgb() & 0xFFFFFF);
}
} // namespace

void InstallStandardDialogs()
{
    Dialogs::Hooks &hooks = Dialogs::Installed();
    hooks.msgBox = ShowMsgBox;
    hooks.openFile = [](const Dialogs::FileQuestion &q) { return ChooseFile(q, QFileDialog::AcceptOpen); };
    hooks.saveFile = [](const Dialogs::FileQuestion &q) { return ChooseFile(q, QFileDialog::AcceptSave); };
    hooks.chooseColour = AskColour;
    hooks.settleChanges = frmConflict::Settle;
    hooks.serveEvents = [] { QApplication::processEvents(); };
    Painting::Install([] {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
    });
}
