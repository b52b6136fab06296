#pragma once

#include "contacts/People.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/frmAddContact.h"
#include "controls/ComboModel.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "database/statements/System.h"
#include "forms/frames/FormBuilder.h"
#include "support/ModalDriver.h"

#include <QDir>

/// What a test of the contact screens starts with: an empty database, a script of boxes, hands for modal
/// forms, and every right.
struct ContactFixture : LogicFixture {
    ContactFixture()
    {
        gUserRights = RightsBlank();
        gDialogResult = 0;
        LoadSystemValues();
        QDir(database.Directory()).mkpath("temp");
    }

    ModalDriver driver;
};

inline QString Caption(QWidget &form, const QString &button)
{
    return Find<QPushButton>(form, button)->text();
}

inline bool IsShown(QWidget &form, const QString &name)
{
    return Find<QWidget>(form, name)->isVisibleTo(&form);
}

inline bool IsReadOnly(QWidget &form, const QString &field)
{
    return Find<QLineEdit>(form, field)->isReadOnly();
}

inline ListModel &List(QWidget &form, const QString &name)
{
    return Find<ListView>(form, name)->Model();
}

inline void Choose(QWidget &form, const QString &list, const QString &text)
{
    ComboModel &model = Find<ComboBox>(form, list)->Model();
    model.SetCurrent(model.FindText(text));
}

inline QString Chosen(QWidget &form, const QString &list)
{
    return Find<ComboBox>(form, list)->Model().CurrentText();
}

inline void TypeName(QWidget &form, const QString &forename, const QString &surname)
{
    TypeInto(form, "Forname", forename);
    TypeInto(form, "Surname", surname);
}

/// A person's record, free to be changed, with one of its pages in front; `keys` are those to walk through.
inline std::unique_ptr<frmAddContact> EditingOn(const QString &page, const QStringList &keys)
{
    auto form = std::make_unique<frmAddContact>();
    form->OpenRecords(keys);
    Press(*form, "EditBtn");
    Find<QTabWidget>(*form, "SSActiveTabs1")->setCurrentWidget(Find<QWidget>(*form, page));
    form->show();
    return form;
}
