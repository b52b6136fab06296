#pragma once

#include <QMenu>

#include <functional>

class TreeView;

/// The pop-up menu of the course tree. What its tools can be used for is worked out each time it opens, and
/// before a key of the tree runs one.
class CourseMenu final : public QMenu
{
    Q_OBJECT

public:
    struct Tool {
        QString name;
        std::function<QString()> caption;
        std::function<void()> run;
        std::function<bool()> isOffered;
    };
    /// A key that is only shown is served elsewhere.
    enum class Key { Shown, OfTree };

    /// Opens on the tree where it is asked for.
    explicit CourseMenu(TreeView *tree);
    void Add(const Tool &tool, const QKeySequence &key = {}, Key kind = Key::Shown);
    /// Lets a key of the tree run something that is no tool.
    void Bind(const QKeySequence &key, const std::function<void()> &run);

private:
    TreeView *m_tree;
};
