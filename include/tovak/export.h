// Marks what libtovak.so exports. The library is built with hidden visibility, so only
// the names carrying this mark (and listed in the linker's export map) are seen by callers.
#ifndef TOVAK_EXPORT_H
#define TOVAK_EXPORT_H

#define TOVAK_API __attribute__((visibility("default")))

#endif  // TOVAK_EXPORT_H
