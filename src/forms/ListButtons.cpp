#include "forms/ListButtons.h"

#include "forms/FormBuilder.h"

namespace
{
constexpr int mayAdd = 2;
constexpr int mayChange = 3;
constexpr int fullAccess = 9;
} // namespace

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

void ListButtons::Apply(int level, bool chosen) const
{
    add->setEnabled(level >= mayAdd);
    edit->setText(level >= mayChange ? QStringLiteral("&Edit") : QStringLiteral("&View"));
    edit->setEnabled(chosen);
    del->setEnabled(level == fullAccess && chosen);
}
