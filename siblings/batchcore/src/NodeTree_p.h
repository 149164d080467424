// What the model asks of nodes without telling anybody: values, places, paths.

#pragma once

#include "KXBatchInputModel.h"

namespace NodeTree
{

using Node = KXBatchInputModel::Node;
using NodeData = KXBatchInputModel::NodeData;

// Without a slash at the end, but for "/" itself. Empty for a node without a path.
QString PathKey(const QString& path);
QString PathOf(const Node* node);
// Whether `key` lies below the folder `above`.
bool IsBelow(const QString& key, const QString& above);

int CountOf(const Node* node);
void SetCount(Node* node, int count);
bool Exists(const Node* node);

// What makes a row this row, and what is counted: never taken from elsewhere.
bool IsOwnRole(int role);
// Takes over values of the same row from another node: all of them, or those that the node does not have.
// Name, kind, path and count stay. Returns whether anything changed.
bool TakeValues(Node* node, const Node* from, bool overwrite);

// First place from `from` on that does not stand before `data`, were it of the given kind.
int PlaceOf(const QList<Node*>& siblings, const NodeData& data, bool isFile, int from = 0);
// The sibling of this kind, name and path. Null for data without a path.
Node* FindSame(const QList<Node*>& siblings, const NodeData& data, bool isFile);
// The node of this path at or below `top`, whose own path it has or extends.
Node* NodeBelow(Node* top, const QString& key);

// Makes sure that a branch is as the model keeps it: no null child, children sorted and knowing their parent,
// counts summed up. False if a child belongs to another parent.
bool PutInOrder(Node* branch);

} // namespace NodeTree
