// The root of the framework's classes.
#pragma once

#include <ondrel/platform/export.h>

/// What the framework's classes derive from: an object that is destroyed through a pointer to its base and never copied.
class FRAMEWORK_API CObject {
 public:
  virtual ~CObject() = default;
  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;

 protected:
  CObject() noexcept = default;
};
