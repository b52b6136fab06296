#include "forms/frames/ListButtons.h"

#include "forms/frames/FormBuilder.h"

ListButtons::ListButtons(FormBuilder &form, ListView *list)
{
    form.BeginButtons(FormBuilder::Align::Start);
    add = form.Button(QStringLiteral("AddBtn"), QStringLiteral("&Add"));
    edit = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Edit"));
    del = form.Button(QStringLiteral("DelBtn"), QStringLiteral("&Delete"));
    refresh = form.Button(QStringLiteral("RefBtn"), QStringLiteral("&Refresh"));
    form.Gap();
    exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    QObject::connect(list, &ListView::Opened, edit, &QPushButton::click);
    QObject::connect(list, &ListView::DeletePressed, del, &QPushButton::click);
}

void ListButtons::Apply(Level level, bool chosen) const
{
    add->setEnabled(level >= Level::Add);
    edit->setText(level >= Level::Edit ? QStringLiteral("&Edit") : QStringLiteral("&View"));
    edit->setEnabled(chosen);
    del->setEnabled(level >= Level::Full && chosen);
}
