#pragma once
// The host's types as a plug-in sees them.

#include "common/plugin_abi.hpp"
