#include "TreeNode_p.h"

// The nodes of the batch tree are made, linked and deleted here. They are exported as KXBatchInputModel is.
template struct KXBatchInputModel::TreeNode<KXBatchInputModel::NodeData>;
