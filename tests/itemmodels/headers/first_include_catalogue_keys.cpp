#include <itemmodels/catalogue_keys.h>
