#include <memorykeymodel/memory_key_list_model.h>
