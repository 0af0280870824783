#pragma once

/// Marks what a program that links the shared library may use; everything else stays inside it.
#define SENTREL_API __attribute__((visibility("default")))
