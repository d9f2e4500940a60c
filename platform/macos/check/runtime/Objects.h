#pragma once

#import <Foundation/Foundation.h>

/// What is known of an object beyond its instance variables. It goes when the object goes.
[[nodiscard]] NSMutableDictionary* recordOf(id object);

/// Gives a class methods that all do the same, whatever comes with them. Their names are separated by blanks;
/// they are those of the class's objects, or of the class itself where a plus stands before its name. It
/// takes no message, so that this can be done before the program is loaded to its end.
void answer(const char* owner, const char* names, id (*method)(id object));
inline id (*const itself)(id) = [](id object) { return object; };
inline id (*const nothing)(id) = [](id) -> id { return nil; }; ///< or zero, or no
