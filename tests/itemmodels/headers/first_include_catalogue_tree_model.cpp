#include <itemmodels/catalogue_tree_model.h>
