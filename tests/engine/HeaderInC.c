/* The public header compiles as C too, where its static assertions check the
   records' layout as a C compiler lays it out. */
#include "videoconverter.h"
