#include <itemmodels/catalogue_model.h>
