// What a node of the batch tree does, for any payload with the four comparison operators.

#pragma once

#include <type_traits>

#include "KXBatchInputModel.h"

namespace TreeNodeDetail
{

// Whether a payload says that its operators are a total order that agrees with itself.
template <class Data, class = void>
struct IsTotallyOrdered : std::false_type
{
};

template <class Data>
struct IsTotallyOrdered<Data, std::enable_if_t<Data::IsTotallyOrdered>> : std::true_type
{
};

// Where the search met an element that is neither less nor greater: behind the run of those that do not
// differ.
template <class Node>
int behindEquals(const QList<Node*>& siblings, int from, const Node* child)
{
    int i = from;
    while (i < siblings.size() && !(siblings.at(i)->data != child->data))
        ++i;
    return i;
}

// The place of `child` among `siblings`, which are not empty. Operators may disagree: which of them is asked,
// and in which order, is fixed.
template <class Node>
int sortedPlace(const QList<Node*>& siblings, const Node* child)
{
    const int count = siblings.size();
    int low = 0;
    int high = count - 1;
    for (;;)
    {
        const int middle = (low + high) / 2;
        const Node* node = siblings.at(middle);
        if (low == high)
            return node->data <= child->data ? middle + 1 : middle;
        if (node->data < child->data)
            low = qMin(middle + 1, count - 1);
        else if (node->data > child->data)
            high = middle;
        else
            return behindEquals(siblings, middle, child);
    }
}

// Listings come in sorted, so most children belong at the end. With a total order the search ends there too.
template <class Node, class Data>
bool belongsAtEnd(const QList<Node*>& siblings, const Data& data)
{
    if constexpr (IsTotallyOrdered<Data>::value)
        return siblings.isEmpty() || siblings.last()->data < data;
    else
        return siblings.isEmpty();
}

} // namespace TreeNodeDetail

template <class Data>
KXBatchInputModel::TreeNode<Data>::TreeNode() : parent(nullptr)
{
}

template <class Data>
KXBatchInputModel::TreeNode<Data>::TreeNode::~TreeNode()
{
    // A child without a parent does not take itself out of the list that is walked here.
    for (TreeNode* child : qAsConst(children))
    {
        if (!child)
            continue;
        child->parent = nullptr;
        delete child;
    }
    if (parent)
        parent->children.removeOne(this);
    parent = nullptr;
}

template <class Data>
int KXBatchInputModel::TreeNode<Data>::AddChild(TreeNode* parent, TreeNode* child)
{
    if (!parent || !child)
        return -1;
    if (child->parent)
        child->parent->children.removeOne(child);
    child->parent = parent;
    QList<TreeNode*>& siblings = parent->children;
    const int place = TreeNodeDetail::belongsAtEnd(siblings, child->data)
        ? siblings.size()
        : TreeNodeDetail::sortedPlace(siblings, child);
    siblings.insert(place, child);
    return place;
}

// The library's own nodes are those of one place, src/TreeNode.cpp.
extern template struct KXBatchInputModel::TreeNode<KXBatchInputModel::NodeData>;
