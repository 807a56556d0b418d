// The root of the framework's classes.
#pragma once

#include <ondrel/platform/export.h>

/// The base of the framework's classes: destroyed through a pointer to it, and never copied.
class FRAMEWORK_API CObject {
 public:
  virtual ~CObject() = default;
  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;

 protected:
  CObject() noexcept = default;
};
