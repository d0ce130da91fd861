#include <itemmodels/value_order.h>
