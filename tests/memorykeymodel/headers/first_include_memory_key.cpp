#include <memorykeymodel/memory_key.h>
