#pragma once

#import <Foundation/Foundation.h>

// What a person does. Each gives nothing or an NSError that says why a person could not do it.
namespace driver {

id chooseLine(NSDictionary* asked);
id press(NSDictionary* asked);
id clickInto(NSDictionary* asked);
/// Puts a control to a value: switch, list, segments, stepper, row of a table.
id set(NSDictionary* asked);
id type(NSDictionary* asked);
id turnTo(NSDictionary* asked);
id closeWindow(NSDictionary* asked);

} // namespace driver
