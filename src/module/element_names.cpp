// The two element names of the node tree, made when the library is loaded and freed when it is unloaded.

#include "module/element_names.h"

namespace ondrel {

const ElementNames g_elementNames;

}  // namespace ondrel
