#include "IBrush.h"

IBrush::~IBrush() = default;
