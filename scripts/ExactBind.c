/*
 * Preloaded into the Wine server. Windows gives what a datagram socket sends the source address
 * that the socket is bound to. Wine binds to any address of an interface that it finds in this
 * list, and to exactly the one asked for if it has no list.
 */
#include <errno.h>
#include <ifaddrs.h>
#include <stddef.h>

int getifaddrs(struct ifaddrs** list)
{
    *list = NULL;
    errno = ENOSYS;
    return -1;
}
