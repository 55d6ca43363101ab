-- What panels have published: one row for each message.
CREATE TABLE reading (
    time timestamptz NOT NULL,  -- When store.py got it.
    topic text NOT NULL,
    number double precision,    -- 1 and 0 for yes and no; NULL where the message was no number.
    text text                   -- NULL where the message was one.
);
CREATE INDEX reading_topic_time ON reading (topic, time);
CREATE INDEX reading_time ON reading USING brin (time);  -- Small; for removing what is old.

-- Numbers by the minute, also for tools that cannot group.
CREATE VIEW reading_minute AS
SELECT date_trunc('minute', time) AS time, topic, avg(number) AS mean, min(number) AS least,
    max(number) AS greatest, count(number) AS values
FROM reading WHERE number IS NOT NULL GROUP BY 1, 2;
