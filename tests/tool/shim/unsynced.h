/* What a power cut would take: the bytes written to files since their last fsync. */
#ifndef SHIM_UNSYNCED_H
#define SHIM_UNSYNCED_H

/* From now on files are watched. */
void unsynced_watch(void);

/* Before a write to the descriptor, and after its fsync. */
void unsynced_write(int descriptor);
void unsynced_sync(int descriptor);

/* Cuts every file to the size that is safe. */
void unsynced_lose(void);

#endif
