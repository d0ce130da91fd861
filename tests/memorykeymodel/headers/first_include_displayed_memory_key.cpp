#include <memorykeymodel/displayed_memory_key.h>
