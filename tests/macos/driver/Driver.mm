// Lets a test be the person in front of the program, the system around it, and the clock.
//
// The test and the program share a socket, whose number is in KELPA_TEST_SOCKET. A line asks for one thing,
// as an object of JSON whose "do" says what; another line answers, with what was asked for in "answer" or
// with what is wrong in "error". Before it answers, all that follows from the command has been done: queues
// are empty, events handled, windows laid out. Nothing happens by itself in between, and time passes only by
// "pass".
//
// A test is a class of macos_support.MacTest, in a file tests/macos/NAME_test.py of one subject:
//
//     class Launch(MacTest):
//         def test_the_menu_bar_shows_the_time(self):
//             program = self.launch({"pref.work.time": 25})
//             program.pass_time(1)
//             self.assertEqual(program.title(), "24:59")
//
// `MacTest` and `Program` in macos_support.py have a method for each command; what is done to a view names
// the view by what a person would see or hear of it.
#import <AppKit/AppKit.h>

#include "tests/macos/driver/Person.h"
#include "tests/macos/driver/Windows.h"
#include "tests/macos/runtime/Objects.h"
#import "tests/macos/standin/StandIns.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

namespace {

using Command = id (*)(NSDictionary* asked);

void handleEvents() {
    while (NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                               untilDate:[NSDate distantPast]
                                                  inMode:NSDefaultRunLoopMode
                                                 dequeue:YES])
        [NSApp sendEvent:event];
}

void settle() {
    for (int round = 0; round < 3; ++round) {
        standin::settleQueues();
        handleEvents();
        standin::pass(0);
    }
    for (NSWindow* window in [NSApp windows])
        if ([window isVisible])
            layOutWithin([window contentView]);
}

id pass(NSDictionary* asked) {
    standin::pass([asked[@"seconds"] doubleValue]);
    return nil;
}

id post(NSDictionary* asked) {
    [[NSDistributedNotificationCenter defaultCenter] postNotificationName:asked[@"name"] object:nil];
    return nil;
}

id changeScreens(NSDictionary* asked) {
    standin::setScreens(asked[@"screens"]);
    [[NSNotificationCenter defaultCenter]
        postNotificationName:NSApplicationDidChangeScreenParametersNotification
                      object:NSApp];
    return nil;
}

/// The system moves the windows of a screen that went away.
id moveWindow(NSDictionary* asked) {
    NSArray* frame = asked[@"frame"];
    [driver::windowNumbered(asked[@"window"])
        setFrame:NSMakeRect([frame[0] doubleValue], [frame[1] doubleValue], [frame[2] doubleValue],
                            [frame[3] doubleValue])
         display:YES];
    return nil;
}

NSEvent* eventOf(NSEventType type) {
    if (type == NSFlagsChanged)
        return [NSEvent keyEventWithType:type
                                location:NSZeroPoint
                           modifierFlags:0
                               timestamp:0
                            windowNumber:0
                                 context:nil
                              characters:@""
             charactersIgnoringModifiers:@""
                               isARepeat:NO
                                 keyCode:0];
    return [NSEvent mouseEventWithType:type
                              location:NSZeroPoint
                         modifierFlags:0
                             timestamp:0
                          windowNumber:0
                               context:nil
                           eventNumber:0
                            clickCount:0
                              pressure:0];
}

id happenElsewhere(NSDictionary* asked) {
    standin::happenElsewhere(eventOf(static_cast<NSEventType>([asked[@"type"] integerValue])));
    return nil;
}

id startAgain(NSDictionary*) {
    const BOOL visible = [[NSApp windows] count] > 0;
    return @([[NSApp delegate] applicationShouldHandleReopen:NSApp hasVisibleWindows:visible]);
}

/// Reads what is stored, or stores a value as another program does. Of the types only truth values are told
/// apart from numbers.
id defaultsOf(NSDictionary* asked) {
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    if (id value = asked[@"value"])
        [defaults setObject:value forKey:asked[@"key"]];
    return [defaults objectForKey:asked[@"key"]];
}

id clickBeside(NSDictionary*) {
    standin::clickBesidePopovers();
    return nil;
}

id setMenuOpen(NSDictionary* asked) {
    standin::setMenuOpen([asked[@"open"] boolValue]);
    return nil;
}

id live(NSDictionary*) {
    return liveObjects();
}

id notes(NSDictionary*) {
    return takeNotes();
}

const std::map<std::string, Command>& commands() {
    static const auto* all = new std::map<std::string, Command>{
        {"pass", pass},
        {"move", moveWindow},
        {"post", post},
        {"screens", changeScreens},
        {"elsewhere", happenElsewhere},
        {"start again", startAgain},
        {"defaults", defaultsOf},
        {"click beside", clickBeside},
        {"menu open", setMenuOpen},
        {"live", live},
        {"notes", notes},
        {"windows", driver::windows},
        {"title", driver::title},
        {"menu", driver::menu},
        {"lacking actions", driver::lackingActions},
        {"choose line", driver::chooseLine},
        {"press", driver::press},
        {"click into", driver::clickInto},
        {"set", driver::set},
        {"type", driver::type},
        {"turn to", driver::turnTo},
        {"close", driver::closeWindow},
    };
    return *all;
}

NSDictionary* answerTo(NSDictionary* asked) {
    const auto command = commands().find([asked[@"do"] UTF8String]);
    if (command == commands().end())
        return @{@"error" : [NSString stringWithFormat:@"There is no command '%@'", asked[@"do"]]};
    id answer = command->second(asked);
    settle();
    if ([answer isKindOfClass:[NSError class]])
        return @{@"error" : [answer localizedDescription]};
    return @{@"answer" : answer ? answer : [NSNull null]};
}

/// Handles one line. An exception ends the test, not the program.
NSData* handle(const std::string& line) {
    NSDictionary* answer = nil;
    try {
        NSData* data = [NSData dataWithBytes:line.data() length:line.size()];
        answer = answerTo([NSJSONSerialization JSONObjectWithData:data options:0 error:nullptr]);
    } catch (...) {
        answer = @{@"error" : @"An exception of the system's, which stands in what the program said"};
    }
    return [NSJSONSerialization dataWithJSONObject:answer options:0 error:nullptr];
}

void serve(int socket) {
    FILE* stream = fdopen(socket, "r+");
    char* line = nullptr;
    std::size_t room = 0;
    for (ssize_t length; (length = getline(&line, &room, stream)) > 0;) {
        @autoreleasepool {
            NSData* answer = handle(std::string(line, static_cast<std::size_t>(length)));
            std::fwrite([answer bytes], 1, [answer length], stream);
            std::fputc('\n', stream);
            std::fflush(stream);
        }
    }
    [NSApp terminate:nil]; // the test is over
}

} // namespace

/// Starts to listen once the program has launched.
@interface Driver : NSObject
@end

@implementation Driver

+ (void)load {
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(launched:)
                                                 name:NSApplicationDidFinishLaunchingNotification
                                               object:nil];
}

+ (void)launched:(NSNotification*)notification {
    [self performSelector:@selector(serve) withObject:nil afterDelay:0];
}

+ (void)serve {
    const char* socket = std::getenv("KELPA_TEST_SOCKET");
    if (!socket)
        return;
    settle();
    serve(std::atoi(socket));
}

@end
