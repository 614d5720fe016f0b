// Nothing but what all test programs include, compiled once for all of them.
