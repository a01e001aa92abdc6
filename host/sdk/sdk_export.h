#pragma once
// Visibility of the SDK's classes: the host and the treasury library both load this one shared
// library, so its classes (and their type information) must be seen from outside it.
#define TR_SDK_EXPORT __attribute__((visibility("default")))
