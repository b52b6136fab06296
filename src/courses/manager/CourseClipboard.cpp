#include "courses/manager/CourseClipboard.h"

namespace
{
/// What may be pasted where.
struct PasteRule {
    bool paste;
    bool pasteRoot;
};
constexpr PasteRule onNothing{false, false};
constexpr PasteRule onFolder{true, true};
constexpr PasteRule onCourseInFolder{true, true};
constexpr PasteRule onCourseAtRoot{false, true};

PasteRule RuleFor(const TreeNode *selected)
{
    if (!selected)
        return onNothing;
    if (CourseNode::IsFolder(selected))
        return onFolder;
    return CourseNode::IsAtRoot(selected) ? onCourseAtRoot : onCourseInFolder;
}
} // namespace

void CourseClipboard::Take(Pending pending, const TreeNode *node)
{
    m_pending = pending;
    m_course = CourseNode::CourseOf(node);
    m_folder = m_course ? FolderRef(0) : CourseNode::FolderOf(node);
    m_place = CourseNode::PlaceOf(node);
    m_key = node->key;
    m_text = node->text;
}

CourseClipboard::Offer CourseClipboard::At(const TreeNode *selected) const
{
    Offer offer;
    if (m_pending == Pending::Nothing)
        return offer;
    const PasteRule rule = RuleFor(selected);
    offer.paste = rule.paste;
    offer.pasteRoot = rule.pasteRoot;
    offer.pasteDuplicate = selected && m_pending == Pending::Copy && m_course;
    if (offer.paste) {
        const TreeNode *folder = CourseNode::IsFolder(selected) ? selected : selected->parent;
        offer.pasteCaption = u"Paste in " % folder->text;
    }
    return offer;
}
