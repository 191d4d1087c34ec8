#pragma once

/// Marks a class or function that users of the shared library may call; everything else stays hidden in it.
#define ZEM_EXPORT __attribute__((visibility("default")))
