#include <session/robot_session.h>
