#include <memorykeymodel/displayed_memory_key_list_model.h>
