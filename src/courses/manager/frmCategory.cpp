#include "courses/manager/frmCategory.h"

#include "courses/lists/TreeViewFunc.h"
#include "database/statements/Security.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"

frmCategory::frmCategory(FolderStore store, QWidget *parent)
    : ItemDialog(QStringLiteral("frmCategory"), QStringLiteral("Folder"), parent)
    , m_store(std::move(store))
{
    constexpr int longestName = 255;
    FormBuilder form(this);
    AddNotice(form);
    m_name = form.Text(QStringLiteral("CatName"), QStringLiteral("Name for this Folder:"), longestName);
    Required().Add(form.Label(), m_name);
    m_description =
        form.Notes(QStringLiteral("Description"), QStringLiteral("A brief descripton for this  Folder:"));
    m_placeList = form.Tree(QStringLiteral("CatList"), QStringLiteral("Folder location:"), m_places);
    AddButtons(form, QStringLiteral("ExitBtn"));
    Modified().Watch(m_places);
    connect(m_placeList, &TreeView::TickAsked, this,
            [this](TreeNode *node) { ToggleNodeTick(m_places, node); });
}

void frmCategory::NewFolder(const QString &location)
{
    m_store.list(m_places);
    Tick(location);
    Modified().Clear();
    ApplyRights();
}

void frmCategory::EditFolder(FolderRef folderRef)
{
    BeginEditing(folderRef.number);
    m_store.list(m_places);
    const ReadRow<FolderTree::Folder> folder = m_store.read(folderRef);
    if (folder) {
        m_parent = folder->parent;
        m_name->setText(folder->label);
        m_description->setPlainText(folder->description);
        Tick(u'!' % SqlNumber(m_parent));
    }
    // A folder is moved by cutting and pasting it.
    m_placeList->setEnabled(false);
    EndReading(static_cast<bool>(folder), QStringLiteral("folder"));
    ApplyRights();
}

QString frmCategory::FolderName() const
{
    return m_name->text();
}

void frmCategory::Tick(const QString &key)
{
    TreeNode *node = m_places.Find(key);
    if (!node)
        return;
    m_places.SetTick(node, TreeTick::On);
    m_places.Select(node);
    m_placeList->ShowNode(node);
}

void frmCategory::ApplyRights()
{
    if (UserMay(m_store.right, Level::Edit))
        return;
    LockFields(m_name, true);
    LockFields(m_description, true);
    m_placeList->setEnabled(false);
    LockStoring();
}

int frmCategory::Store()
{
    const QString description = m_description->toPlainText();
    if (Key() > 0)
        return m_store.update({m_name->text(), description, m_parent}, FolderRef(Key()));
    return m_store.add(m_name->text(), description, m_places) ? 1 : 0;
}
