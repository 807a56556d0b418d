// Contract: the class framework, in the part that the model stands on. One include for all of it.
//
// The classes carry the framework's names and keep its behaviour, so that its users are at home. Two things differ:
// exceptions are thrown by value and caught by reference, and a CString's text is UTF-16 on every platform.
#pragma once

#include <ondrel/platform/framework/application.h>
#include <ondrel/platform/framework/archive.h>
#include <ondrel/platform/framework/exceptions.h>
#include <ondrel/platform/framework/extension_module.h>
#include <ondrel/platform/framework/file.h>
#include <ondrel/platform/framework/image_list.h>
#include <ondrel/platform/framework/library_loading.h>
#include <ondrel/platform/framework/module_state.h>
#include <ondrel/platform/framework/object.h>
#include <ondrel/platform/framework/string.h>
#include <ondrel/platform/framework/sync.h>
#include <ondrel/platform/framework/thread_data.h>
