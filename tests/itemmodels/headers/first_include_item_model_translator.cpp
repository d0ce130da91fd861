#include <itemmodels/item_model_translator.h>
