#pragma once

#include "forms/fields/RequiredMarks.h"
#include "forms/frames/FormDialog.h"

class QLineEdit;

/// Registers an existing database file as a data source.
class frmRegisterDB final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmRegisterDB(QWidget *parent = nullptr);

    /// Shows the form filled in for a database that was just created, and returns when it is closed.
    static void Propose(const QString &source, const QString &description, const QString &file);

protected:
    bool MayLeave() override;

private:
    void Register();

    RequiredMarks m_required;
    QLineEdit *m_source;
    QLineEdit *m_description;
    QLineEdit *m_file;
    ModifiedMark *m_modified;
};
