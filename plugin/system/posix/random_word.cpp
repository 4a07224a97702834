#include "system/random_word.hpp"

#include <random>

unsigned random_word() { return std::random_device("/dev/urandom")(); }
