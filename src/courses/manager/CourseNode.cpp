#include "courses/manager/CourseNode.h"

#include "controls/ListModel.h"

bool CourseNode::IsCourse(const TreeNode *node)
{
    return node && node->key.startsWith(u'?');
}

bool CourseNode::IsFolder(const TreeNode *node)
{
    return node && node->key.startsWith(u'!');
}

bool CourseNode::IsAtRoot(const TreeNode *node)
{
    return node->parent->key.isEmpty();
}

CourseRef CourseNode::CourseOf(const TreeNode *node)
{
    return CourseRef(IsCourse(node) ? KeyNumber(node->key) : 0);
}

FolderRef CourseNode::PlaceOf(const TreeNode *node)
{
    if (!IsAtRoot(node))
        return FolderRef(KeyNumber(node->parent->key));
    const qsizetype folder = node->key.indexOf(u'!', 1);
    return FolderRef(folder < 0 ? 0 : KeyNumber(node->key.mid(folder)));
}

FolderRef CourseNode::FolderOf(const TreeNode *node)
{
    if (IsFolder(node))
        return FolderRef(KeyNumber(node->key));
    return node && !IsAtRoot(node) ? PlaceOf(node) : FolderRef(0);
}

QString CourseNode::KeyOf(FolderRef folderRef)
{
    return u'!' % SqlNumber(folderRef);
}

QString CourseNode::KeyOf(CourseRef courseRef, FolderRef folderRef)
{
    const QString course = u'?' % SqlNumber(courseRef);
    return folderRef ? QString(course % KeyOf(folderRef)) : course;
}

std::vector<TreeNode *> CourseNode::NodesOf(const TreeModel &tree, CourseRef courseRef)
{
    std::vector<TreeNode *> nodes = tree.Nodes();
    std::erase_if(
        nodes, [courseRef](const TreeNode *node) { return !IsCourse(node) || CourseOf(node) != courseRef; });
    return nodes;
}
