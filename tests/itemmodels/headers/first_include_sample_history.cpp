#include <itemmodels/sample_history.h>
