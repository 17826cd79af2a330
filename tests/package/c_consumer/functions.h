/* functions.h: every exported function, called from C. */
#ifndef FUNCTIONS_H
#define FUNCTIONS_H

/* Calls every exported function; the number of them. */
int call_every_function(void);

#endif
