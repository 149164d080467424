// Reads a node's payload in place and compares it. Nothing here makes a string.

#pragma once

#include "KXBatchInputModel.h"

// Empty where the role is missing or no text.
QStringView TextOf(const KXBatchInputModel::NodeData& data, int role);
bool IsFile(const KXBatchInputModel::NodeData& data);

// Negative, 0 or positive, as `a` stands before, at or behind the place of `b`.
int CompareNodes(const KXBatchInputModel::NodeData& a, const KXBatchInputModel::NodeData& b);
// The same, as if `a` were of the given kind.
int CompareNodes(const KXBatchInputModel::NodeData& a, bool isFile, const KXBatchInputModel::NodeData& b);
