#include <itemmodels/distinct_colors.h>
