#include <itemmodels/watch_model.h>
