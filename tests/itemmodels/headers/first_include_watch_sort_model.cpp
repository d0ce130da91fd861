#include <itemmodels/watch_sort_model.h>
