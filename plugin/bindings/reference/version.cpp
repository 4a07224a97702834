#include "bindings/reference/reference.hpp"

const char felspar_version[] = FELSPAR_VERSION;
