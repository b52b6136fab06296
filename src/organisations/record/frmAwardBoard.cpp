#include "organisations/record/frmAwardBoard.h"

#include "forms/frames/FormBuilder.h"
#include "forms/progress/ProgressBox.h"
#include "organisations/record/AwardBoardODBC.h"
#include "organisations/record/OrganisationModule.h"

frmAwardBoard::frmAwardBoard(QWidget *parent)
    : FormDialog(QStringLiteral("frmAwardBoard"), QStringLiteral("Award Boards"), parent)
{
    m_organisations.SetColumns({QStringLiteral("Organisations")});
    m_organisations.SetCheckable(true);
    FormBuilder form(this);
    form.Line(QStringLiteral("Help"), QStringLiteral("Check the organisations that are also award boards."));
    ListView *list = form.List(QStringLiteral("MainList"), {}, m_organisations);
    list->setAccessibleName(QStringLiteral("Organisations"));
    list->SetEmptyText(QStringLiteral("No organisations yet."));
    form.BeginButtons();
    m_updateBtn = form.DefaultButton(QStringLiteral("UpdateBtn"), QStringLiteral("&Update"));
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    ADO_Organisations_GetAll(m_organisations);
    m_modified = new ModifiedMark(m_updateBtn, this);
    connect(&m_organisations, &ListModel::Checked, m_modified, &ModifiedMark::Set);
    connect(m_updateBtn, &QPushButton::clicked, this, [this] {
        if (Update())
            accept();
    });
    connect(exit, &QPushButton::clicked, this, &frmAwardBoard::reject);
    resize(fontMetrics().averageCharWidth() * 70, fontMetrics().lineSpacing() * 24);
}

bool frmAwardBoard::Update()
{
    bool stored = false;
    ProgressBox::Run(
        this, windowTitle(), QStringLiteral("organisations"), QStringLiteral("The rest are as they were."),
        [&](Progress &progress) { stored = Organisations_StoreAwardFlags(m_organisations, progress); });
    if (stored)
        m_modified->Saved();
    return stored;
}

bool frmAwardBoard::MayLeave()
{
    return m_modified->AskToSave([this] { Update(); });
}
