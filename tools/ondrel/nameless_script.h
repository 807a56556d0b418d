// A first look for scripts that name no file, which a load would never come back from.
#pragma once

#include <string_view>

namespace ondrel::command {

/// True when a project's text can be seen to have no Script element without a File attribute, at any place. False when
/// it has one, or might: then the text is to be read as XML, which takes as long as the load itself.
bool NamesFileOfEveryScript(std::string_view text);

}  // namespace ondrel::command
