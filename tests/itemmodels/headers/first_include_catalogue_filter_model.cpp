#include <itemmodels/catalogue_filter_model.h>
